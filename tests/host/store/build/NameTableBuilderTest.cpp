#include "host/store/build/NameTableBuilder.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using vex::Atom;

namespace {

class NameTableBuilder : public testing::Test {
protected:
    Atom add(std::u16string_view name) { return m_names.add(name, m_texts); }

    vex::TextTableBuilder m_texts{1};
    vex::NameTableBuilder m_names{1};
};

TEST_F(NameTableBuilder, NumbersNamesInTheOrderInWhichTheyFirstCome) {
    EXPECT_EQ(add(u"name"), 0U);
    EXPECT_EQ(add(u"usage"), 1U);
    EXPECT_EQ(add(u"name"), 0U);
    EXPECT_EQ(add(u""), 2U);
    EXPECT_EQ(add(u""), 2U);
    EXPECT_EQ(add(u"usage"), 1U);
}

TEST_F(NameTableBuilder, KeepsNamesOfOneLengthWithTheSameEndsApart) {
    EXPECT_EQ(add(u"axxb"), 0U);
    EXPECT_EQ(add(u"ayyb"), 1U);
    EXPECT_EQ(add(u"axxb"), 0U);
    EXPECT_EQ(add(u"ayyb"), 1U);
}

TEST_F(NameTableBuilder, FindsEachOfManyNamesAgain) {
    std::vector<std::u16string> names;
    for (char16_t first = u'a'; first <= u'z'; ++first) {
        for (char16_t last = u'a'; last <= u'z'; ++last) {
            names.push_back({first, u'-', last});
        }
    }
    for (Atom expected = 0; expected < names.size(); ++expected) {
        EXPECT_EQ(add(names[expected]), expected);
    }
    for (Atom expected = 0; expected < names.size(); ++expected) {
        EXPECT_EQ(add(names[expected]), expected);
        EXPECT_EQ(m_names.view(expected, m_texts), names[expected]);
    }
}

} // namespace
