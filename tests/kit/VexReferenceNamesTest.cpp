#include "VexReferenceNames.h"

#include <gtest/gtest.h>

namespace {

std::vector<I18NString> split(char const* reference) {
    std::vector<I18NString> names;
    EXPECT_TRUE(VexSplitReference(reference, names)) << reference;
    return names;
}

TEST(ReferenceNames, AreWhatStandsInBrackets) {
    EXPECT_EQ(split("[Sales].[Orders]"), (std::vector<I18NString>{"Sales", "Orders"}));
    EXPECT_EQ(split(" [a b] . [] "), (std::vector<I18NString>{"a b", ""}));
    EXPECT_EQ(split("[a]]b].[\xF0\x9F\x98\x80]"),
              (std::vector<I18NString>{"a]b", "\xF0\x9F\x98\x80"}));
    EXPECT_TRUE(split("").empty());
}

TEST(ReferenceNames, AreRefusedWhereTheTextIsOfAnotherForm) {
    for (char const* const text : {"Sales", "[a", "[a].", "[a][b]", ".[a]", "[a].b", " "}) {
        std::vector<I18NString> names;
        EXPECT_FALSE(VexSplitReference(text, names)) << text;
    }
}

TEST(ReferenceNames, AreTheSameAfterJoiningAndSplitting) {
    std::vector<I18NString> const names{"a]b", "", "]]", "c"};
    I18NString reference;
    for (I18NString const& name : names) {
        VexAppendToReference(reference, name);
    }
    EXPECT_EQ(reference, "[a]]b].[].[]]]]].[c]");
    std::vector<I18NString> again;
    EXPECT_TRUE(VexSplitReference(reference, again));
    EXPECT_EQ(again, names);
}

} // namespace
