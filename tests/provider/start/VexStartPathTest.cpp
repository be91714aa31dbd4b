#include "provider/start/VexStartPath.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using Parts = std::list<std::string>;

struct Split {
    bool wellFormed;
    Parts parts;
    bool operator==(Split const&) const = default;
};

Split split(char const* path) {
    std::list<I18NString> parts;
    bool const wellFormed = GetNamePartsFromStartPath(path, parts);
    Split result{wellFormed, {}};
    for (I18NString const& part : parts) {
        result.parts.push_back(part.toUtf8());
    }
    return result;
}

Split good(Parts const& parts) {
    return {true, parts};
}

std::string replaced(char const* source, char const* search, char const* replacement) {
    I18NString result("what was there before");
    I18NString const& returned = SearchAndReplace(source, search, replacement, result);
    EXPECT_EQ(&returned, &result);
    return result.toUtf8();
}

std::string joined(std::vector<I18NString> const& items, char const* before = "") {
    I18NString text(before);
    getItemsStringFromList(items, text);
    return text.toUtf8();
}

TEST(StartPath, SplitsBracketedNamesAtDots) {
    EXPECT_EQ(split("[Sales].[Orders]"), good({"Sales", "Orders"}));
    EXPECT_EQ(split("[a].[b].[c].[d]"), good({"a", "b", "c", "d"}));
}

TEST(StartPath, SkipsWhiteSpaceAroundBracketsAndDots) {
    EXPECT_EQ(split("  [Sales] . [Orders]  "), good({"Sales", "Orders"}));
    EXPECT_EQ(split("\t[Sales]\n.\r[Orders]\xE3\x80\x80"), good({"Sales", "Orders"}));
}

TEST(StartPath, KeepsWhatStandsInsideAName) {
    EXPECT_EQ(split("[a b]"), good({"a b"}));
    EXPECT_EQ(split("[ a ]"), good({" a "}));
    EXPECT_EQ(split("[a.b]"), good({"a.b"}));
    EXPECT_EQ(split("[a[b]"), good({"a[b"}));
    EXPECT_EQ(split("[\xF0\x9F\x98\x80\xC3\xA4]"), good({"\xF0\x9F\x98\x80\xC3\xA4"}));
}

TEST(StartPath, ReadsADoubledClosingBracketAsOne) {
    EXPECT_EQ(split("[a]]b]"), good({"a]b"}));
    EXPECT_EQ(split("[a]]]"), good({"a]"}));
    EXPECT_EQ(split("[a]]]]]"), good({"a]]"}));
    EXPECT_EQ(split("[a]]]]"), (Split{false, {"a]]"}}));
}

TEST(StartPath, TakesAnEmptyNameForAName) {
    EXPECT_EQ(split("[]"), good({""}));
    EXPECT_EQ(split("[].[a].[]"), good({"", "a", ""}));
}

TEST(StartPath, TakesTheEmptyPathForNoNames) {
    EXPECT_EQ(split(""), good({}));
}

TEST(StartPath, RefusesAPathOfWhiteSpaceAlone) {
    EXPECT_EQ(split("   "), (Split{false, {}}));
}

TEST(StartPath, RefusesMalformedPathsAndKeepsThePartsBeforeTheFault) {
    EXPECT_EQ(split("[a][b]"), (Split{false, {"a"}}));
    EXPECT_EQ(split("[a]."), (Split{false, {"a"}}));
    EXPECT_EQ(split("[a]. "), (Split{false, {"a"}}));
    EXPECT_EQ(split("a"), (Split{false, {}}));
    EXPECT_EQ(split("[a"), (Split{false, {"a"}}));
    EXPECT_EQ(split("[a] x"), (Split{false, {"a"}}));
    EXPECT_EQ(split("[a].x"), (Split{false, {"a"}}));
    EXPECT_EQ(split("[a]..[b]"), (Split{false, {"a"}}));
    EXPECT_EQ(split("]"), (Split{false, {}}));
    EXPECT_EQ(split("."), (Split{false, {}}));
    EXPECT_EQ(split("["), (Split{false, {""}}));
    EXPECT_EQ(split(".[a]"), (Split{false, {}}));
}

TEST(StartPath, AppendsToThePartsThatAreThere) {
    std::list<I18NString> parts{"before"};
    EXPECT_TRUE(GetNamePartsFromStartPath("[a]", parts));
    EXPECT_EQ(parts, (std::list<I18NString>{"before", "a"}));
}

TEST(SearchAndReplace, ReplacesEachOccurrence) {
    EXPECT_EQ(replaced("a-b-c", "-", "+"), "a+b+c");
    EXPECT_EQ(replaced("abcabc", "bc", ""), "aa");
    EXPECT_EQ(replaced("abc", "x", "y"), "abc");
    EXPECT_EQ(replaced("", "x", "y"), "");
}

TEST(SearchAndReplace, DoesNotSearchWhatItBroughtIn) {
    EXPECT_EQ(replaced("a]b]", "]", "]]"), "a]]b]]");
    EXPECT_EQ(replaced("aaa", "aa", "a"), "aa");
}

TEST(SearchAndReplace, CopiesTheTextWhenAReplacementIsTheSearchItself) {
    EXPECT_EQ(replaced("a]b]]", "]", "]"), "a]b]]");
}

TEST(ItemsString, SeparatesItemsByACommaAndABlank) {
    EXPECT_EQ(joined({"v1", "v2", "v3"}), "v1, v2, v3");
    EXPECT_EQ(joined({"", ""}), ", ");
}

TEST(ItemsString, GivesASingleItemAlone) {
    EXPECT_EQ(joined({"v1"}), "v1");
}

TEST(ItemsString, AppendsNothingForNoItems) {
    EXPECT_EQ(joined({}), "");
    EXPECT_EQ(joined({}, "x"), "x");
}

TEST(ItemsString, AppendsToTheTextThatIsThere) {
    EXPECT_EQ(joined({"a", "b"}, "x"), "xa, b");
}

} // namespace
