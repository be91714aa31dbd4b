#include "host/store/image/ReferenceText.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

std::vector<std::u16string> split(char const* reference) {
    std::vector<std::u16string> names;
    EXPECT_TRUE(vex::splitReference(reference, names)) << reference;
    return names;
}

TEST(ReferenceText, IsSplitIntoItsNames) {
    EXPECT_THAT(split(""), ElementsAre());
    EXPECT_THAT(split("[Sales].[Orders]"), ElementsAre(u"Sales", u"Orders"));
    EXPECT_THAT(split(" [Sales] . [Orders]\t"), ElementsAre(u"Sales", u"Orders"));
    EXPECT_THAT(split("[a b].[a.b].[a[b]"), ElementsAre(u"a b", u"a.b", u"a[b"));
    EXPECT_THAT(split("[]"), ElementsAre(u""));
    EXPECT_THAT(split("[\U0001F600]"), ElementsAre(u"\U0001F600"));
}

TEST(ReferenceText, HoldsABracketAsTwo) {
    EXPECT_THAT(split("[a]]b]"), ElementsAre(u"a]b"));
    EXPECT_THAT(split("[a]]]"), ElementsAre(u"a]"));
    EXPECT_THAT(split("[a]]]]]"), ElementsAre(u"a]]"));
}

TEST(ReferenceText, ThatIsMalformedIsNotSplit) {
    for (char const* const text :
         {"   ", "[a]]]]", "[a][b]", "[a].", "a", "[a", "[a] x", "]", ".", ".[a]", "[a]..[b]"}) {
        std::vector<std::u16string> names;
        EXPECT_FALSE(vex::splitReference(text, names)) << text;
    }
}

TEST(ReferenceText, JoinedFromNamesSplitsIntoThem) {
    I18NString reference;
    for (char16_t const* const name : {u"a]b", u"", u"c.d"}) {
        vex::appendToReference(reference, name);
    }
    EXPECT_EQ(reference, "[a]]b].[].[c.d]");
    EXPECT_THAT(split(reference.c_str()), ElementsAre(u"a]b", u"", u"c.d"));
}

} // namespace
