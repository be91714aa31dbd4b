#include "I18NString.h"

#include <stdexcept>
#include <string>
#include <unordered_set>

#include <gtest/gtest.h>

namespace {

// One more than fits inside a string object, and exactly as many.
I18NString const longText(u"0123456789abcdefghijklmnopqr", 28);
I18NString const exactText(u"0123456789abcdefghijklmnopq", 27);

I18NString aliasOf(std::u16string_view text) {
    I18NString alias;
    alias.setAlias(text.data(), static_cast<int>(text.size()));
    return alias;
}

void expectTerminated(I18NString const& text) {
    EXPECT_EQ(std::u16string_view(text.utf16()), text.view());
}

TEST(I18NString, IsEmptyWithoutText) {
    I18NString const text;
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(text.length(), 0);
    EXPECT_STREQ(text.c_str(), "");
    EXPECT_EQ(text.utf16()[0], 0);
}

TEST(I18NString, TakesNullAsEmpty) {
    EXPECT_TRUE(I18NString(static_cast<char const*>(nullptr)).empty());
    EXPECT_TRUE(I18NString(static_cast<char16_t const*>(nullptr), 3).empty());
    EXPECT_TRUE(I18NString(std::u16string_view()).empty());
    EXPECT_TRUE(I18NString(u"abc", -1).empty());
    I18NString alias("x");
    alias.setAlias(nullptr, 0);
    EXPECT_TRUE(alias.empty());
    expectTerminated(alias);
}

TEST(I18NString, ReadsUtf8) {
    I18NString const text("Verk\xC3\xA4ufe \xF0\x9F\x98\x80");
    EXPECT_EQ(text.view(), u"Verk\u00E4ufe \U0001F600");
    EXPECT_EQ(text.length(), 11);
    EXPECT_STREQ(text.c_str(), "Verk\xC3\xA4ufe \xF0\x9F\x98\x80");
}

TEST(I18NString, ReadsUtf8BytesThatHaveNoTerminator) {
    EXPECT_EQ(I18NString::fromUtf8(std::string_view("abcdef").substr(1, 3)).view(), u"bcd");
    EXPECT_EQ(I18NString::fromUtf8(std::string_view("a\0b", 3)).length(), 3);
}

TEST(I18NString, ReplacesIllFormedUtf8) {
    EXPECT_EQ(I18NString("a\xFFz").view(), u"a\uFFFDz");
    EXPECT_EQ(I18NString("a\xC3").view(), u"a\uFFFD");
}

TEST(I18NString, ReplacesUnpairedSurrogatesInUtf8) {
    I18NString const text(u"a\xD83Dz", 3);
    EXPECT_EQ(text.toUtf8(), "a\xEF\xBF\xBDz");
}

TEST(I18NString, CountsUtf16CodeUnits) {
    I18NString const text(u"\U0001F600x");
    EXPECT_EQ(text.length(), 3);
    EXPECT_EQ(text[0], 0xD83D);
    EXPECT_EQ(text[1], 0xDE00);
    EXPECT_EQ(text[2], u'x');
}

TEST(I18NString, GivesTheNoncharacterOutsideTheText) {
    I18NString const text("ab");
    EXPECT_EQ(text[2], 0xFFFF);
    EXPECT_EQ(text[-1], 0xFFFF);
}

TEST(I18NString, FindsTheFirstIndexOrNone) {
    I18NString const text("a]]b]]");
    EXPECT_EQ(text.find("]]"), 1);
    EXPECT_EQ(text.find("]]", 2), 4);
    EXPECT_EQ(text.find("]]", 5), -1);
    EXPECT_EQ(text.find("c"), -1);
    EXPECT_EQ(text.find(u'b'), 3);
    EXPECT_EQ(text.find(u'b', 4), -1);
}

TEST(I18NString, FindsFromTheStartWhenAskedFromBefore) {
    EXPECT_EQ(I18NString("abc").find("a", -5), 0);
    EXPECT_EQ(I18NString("abc").find(u'a', -5), 0);
    EXPECT_EQ(I18NString("abc").find("c", 99), -1);
}

TEST(I18NString, FindsTheEmptyTextNowhere) {
    EXPECT_EQ(I18NString("abc").find(""), -1);
    EXPECT_EQ(I18NString().find(""), -1);
}

TEST(I18NString, FindsHalfOfAPair) {
    EXPECT_EQ(I18NString(u"\U0001F600").find(char16_t{0xDE00}), 1);
}

TEST(I18NString, CutsSubstringsToTheText) {
    I18NString const text("querySubject");
    EXPECT_EQ(text.substring(5), "Subject");
    EXPECT_EQ(text.substring(0, 5), "query");
    EXPECT_EQ(text.substring(5, 3), "Sub");
    EXPECT_EQ(text.substring(5, 99), "Subject");
    EXPECT_EQ(text.substring(5, 0), "");
    EXPECT_EQ(text.substring(12), "");
    EXPECT_EQ(text.substring(13, 1), "");
}

TEST(I18NString, TakesASubstringStartBelowZeroAsZero) {
    EXPECT_EQ(I18NString("query").substring(-3, 2), "qu");
}

TEST(I18NString, TakesAnyNegativeSubstringLengthAsToTheEnd) {
    EXPECT_EQ(I18NString("query").substring(1, -1), "uery");
    EXPECT_EQ(I18NString("query").substring(0, -7), "query");
}

TEST(I18NString, ReplacesARange) {
    I18NString text("a]b");
    EXPECT_EQ(text.replace(1, 1, "]]"), "a]]b");
    EXPECT_EQ(text.replace(0, 1, ""), "]]b");
    EXPECT_EQ(text.replace(2, 99, "z"), "]]z");
    EXPECT_EQ(text.replace(99, 1, "!"), "]]z!");
    EXPECT_EQ(text.replace(-4, 0, "<"), "<]]z!");
}

TEST(I18NString, Appends) {
    I18NString text("a");
    text.append(I18NString("b")).append(u'c').append(std::u16string_view(u"de"));
    text.appendCodePoint(U'\U0001F600') += "f";
    EXPECT_EQ(text.view(), u"abcde\U0001F600f");
    EXPECT_EQ(I18NString("x") + I18NString("y"), "xy");
}

TEST(I18NString, AppendsItself) {
    I18NString text(longText);
    text += text;
    EXPECT_EQ(text.length(), 56);
    EXPECT_EQ(text.substring(28), longText);
    expectTerminated(text);
}

TEST(I18NString, OrdersByUtf16CodeUnit) {
    I18NString const beyond(u"\U0001F600"); // begins with D83D
    I18NString const last(u"\uFFFD");
    EXPECT_TRUE(beyond < last);
    EXPECT_FALSE(last < beyond);
    EXPECT_LT(beyond.compare(last), 0);
    EXPECT_TRUE(I18NString("a") < I18NString("ab"));
    EXPECT_TRUE(I18NString("Z") < I18NString("a"));
    EXPECT_EQ(I18NString("a").compare("a"), 0);
    EXPECT_GT(I18NString("b").compare("a"), 0);
}

TEST(I18NString, ComparesWithLiterals) {
    I18NString const text("name");
    EXPECT_TRUE(text == "name");
    EXPECT_FALSE(text == "nam");
    EXPECT_FALSE(text == "names");
    EXPECT_FALSE(text == "Name");
    EXPECT_TRUE(text != "other");
    EXPECT_TRUE(I18NString() == "");
    EXPECT_TRUE(I18NString() == static_cast<char const*>(nullptr));
    EXPECT_FALSE(text == static_cast<char const*>(nullptr));
}

TEST(I18NString, ComparesWithLiteralsBeyondAscii) {
    I18NString const text(u"Verk\u00E4ufe");
    EXPECT_TRUE(text == "Verk\xC3\xA4ufe");
    EXPECT_FALSE(text == "Verk\xC3\xA4uf");
    EXPECT_FALSE(text == "Verk\xE4ufe"); // Latin-1 is not UTF-8
    EXPECT_FALSE(I18NString("Verk") == "Verk\xC3\xA4");
}

TEST(I18NString, DoesNotTakeAnEmbeddedZeroForTheEndOfALiteral) {
    EXPECT_FALSE(I18NString(u"a\0b", 3) == "a");
}

TEST(I18NString, KeepsUtf8UntilItChanges) {
    I18NString text("abc");
    char const* const before = text.c_str();
    EXPECT_EQ(text.c_str(), before);
    text += "d";
    EXPECT_STREQ(text.c_str(), "abcd");
    text.replace(0, 1, "z");
    EXPECT_STREQ(text.c_str(), "zbcd");
    text.clear();
    EXPECT_STREQ(text.c_str(), "");
    text = I18NString("new");
    EXPECT_STREQ(text.c_str(), "new");
    I18NString const other("other");
    text = other;
    EXPECT_STREQ(text.c_str(), "other");
    text.setAlias(u"alias", 5);
    EXPECT_STREQ(text.c_str(), "alias");
}

TEST(I18NString, IsIndependentOfItsCopies) {
    for (I18NString const& original : {I18NString("short"), exactText, longText}) {
        I18NString copy(original);
        copy.replace(0, 1, "X");
        EXPECT_EQ(original[0] == u'X', false);
        I18NString assigned;
        assigned = original;
        EXPECT_EQ(assigned, original);
    }
}

TEST(I18NString, LeavesAnEmptyUsableStringBehindWhenMoved) {
    for (I18NString text : {I18NString("short"), exactText, longText, aliasOf(u"alias")}) {
        I18NString const before(text);
        I18NString moved(std::move(text));
        EXPECT_EQ(moved, before);
        EXPECT_TRUE(text.empty()); // NOLINT: the state after a move is promised
        expectTerminated(text);
        text += "again";
        EXPECT_EQ(text, "again");
        text = std::move(moved);
        EXPECT_EQ(text, before);
        EXPECT_TRUE(moved.empty()); // NOLINT
    }
}

TEST(I18NString, SurvivesAssignmentToItself) {
    I18NString text(longText);
    I18NString& same = text;
    text = same;
    EXPECT_EQ(text, longText);
    text = std::move(same);
    EXPECT_EQ(text, longText);
}

TEST(I18NString, SharesAnAliasedText) {
    static char16_t const units[] = u"Sales Orders";
    I18NString alias;
    alias.setAlias(units, 12);
    EXPECT_EQ(alias.utf16(), units);
    I18NString const copy(alias);
    EXPECT_NE(copy.utf16(), units);
    EXPECT_EQ(copy, "Sales Orders");
}

TEST(I18NString, LeavesAnAliasedTextAsItIs) {
    char16_t units[] = u"Sales";
    I18NString alias;
    alias.setAlias(units, 5);
    alias += "!";
    EXPECT_EQ(alias, "Sales!");
    EXPECT_EQ(std::u16string_view(units), u"Sales");
    alias.setAlias(units, 5);
    alias.replace(0, 1, "s");
    EXPECT_EQ(std::u16string_view(units), u"Sales");
    alias.setAlias(units, 5);
    alias.clear();
    EXPECT_EQ(alias.utf16()[0], 0);
    EXPECT_EQ(std::u16string_view(units), u"Sales");
}

TEST(I18NString, IsTerminatedHoweverItWasMade) {
    std::u16string const source(60, u'x');
    for (std::size_t length : {0U, 1U, 26U, 27U, 28U, 59U, 60U}) {
        I18NString text(std::u16string_view(source).substr(0, length));
        expectTerminated(text);
        I18NString const copy(text);
        expectTerminated(copy);
        expectTerminated(I18NString(aliasOf(std::u16string(source, 0, length))));
        text += "tail";
        expectTerminated(text);
        expectTerminated(copy);
        expectTerminated(text.substring(0, static_cast<int>(length)));
        text.replace(0, 3, "");
        expectTerminated(text);
        text = copy;
        expectTerminated(text);
        I18NString const moved(std::move(text));
        expectTerminated(moved);
    }
}

TEST(I18NString, RefusesMoreTextThanAnIndexCanCount) {
    // The length is judged before the text is looked at.
    char16_t const unit = u'x';
    std::u16string_view const tooLong(&unit, 0x7FFF'FFFFU);
    EXPECT_THROW(I18NString{tooLong}, std::length_error);
}

TEST(I18NString, HashesEqualTextAlike) {
    static char16_t const units[] = u"name";
    I18NString alias;
    alias.setAlias(units, 4);
    std::unordered_set<I18NString> const set{I18NString("name"), alias, I18NString("other")};
    EXPECT_EQ(set.size(), 2U);
}

} // namespace
