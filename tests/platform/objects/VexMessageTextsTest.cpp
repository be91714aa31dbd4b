#include "VexMessageTexts.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

// Every failure that the system raises, and how many parameters it carries.
struct Expected {
    unsigned id;
    int parameters;
};
constexpr Expected failures[] = {
    {1170551942, 2}, {1170588191, 0}, {1170653716, 1}, {1170699671, 0},
    {1170809568, 0}, {1170839636, 0}, {1170869272, 0}, {1170968146, 1},
    {1171025905, 1}, {1171122674, 1}, {1171135124, 1}, {1444335572, 0},
    {1444379511, 0}, {1444379512, 1}, {1444379513, 0}, {1444379514, 1},
};

std::vector<VexMessageText> table() {
    std::size_t count = 0;
    VexMessageText const* const rows = VexMessageTexts(count);
    return {rows, rows + count};
}

TEST(VexMessageTexts, HoldEveryFailureAndNoOther) {
    std::vector<unsigned> expected;
    for (Expected const& failure : failures) {
        expected.push_back(failure.id);
    }
    std::vector<unsigned> found;
    for (VexMessageText const& row : table()) {
        found.push_back(row.id);
    }
    EXPECT_EQ(found, expected);
}

TEST(VexMessageTexts, AscendWithoutRepeats) {
    std::vector<VexMessageText> const rows = table();
    for (std::size_t i = 1; i < rows.size(); ++i) {
        EXPECT_LT(rows[i - 1].id, rows[i].id);
        EXPECT_STRNE(rows[i - 1].text, rows[i].text);
    }
}

TEST(VexMessageTexts, ShowEveryParameterOnce) {
    for (Expected const& failure : failures) {
        std::string const text = VexFindMessageText(failure.id);
        for (int i = 0; i < 10; ++i) {
            std::string const place{'{', static_cast<char>('0' + i), '}'};
            std::size_t const first = text.find(place);
            EXPECT_EQ(first != std::string::npos, i < failure.parameters) << text;
            if (first != std::string::npos) {
                EXPECT_EQ(text.find(place, first + 1), std::string::npos) << text;
            }
        }
    }
}

TEST(VexMessageTexts, AreSentencesThatSayWhatToDo) {
    for (VexMessageText const& row : table()) {
        for (std::string_view const text :
             {VexFindMessageText(row.id), VexFindPlainMessageText(row.id)}) {
            EXPECT_EQ(text.back(), '.') << text;
            EXPECT_NE(text.find(". "), std::string_view::npos) << text;
        }
    }
}

TEST(VexMessageTexts, AreThereWithoutParametersForEachThatShowsSome) {
    for (Expected const& failure : failures) {
        std::string const text = VexFindMessageText(failure.id);
        std::string const plain = VexFindPlainMessageText(failure.id);
        EXPECT_EQ(plain.find('{'), std::string::npos) << plain;
        EXPECT_EQ(plain == text, failure.parameters == 0) << plain;
    }
    EXPECT_EQ(VexFindPlainMessageText(42), nullptr);
}

TEST(VexMessageTexts, HaveNoTextForAnotherNumber) {
    for (unsigned const id : {0U, 1170551941U, 1170551943U, 4294967295U}) {
        EXPECT_EQ(VexFindMessageText(id), nullptr);
    }
}

} // namespace
