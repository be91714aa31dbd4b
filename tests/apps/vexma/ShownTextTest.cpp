#include "apps/vexma/ShownText.h"

#include <gmock/gmock.h>

namespace {

using vex::ShownText;
using vex::shownText;
using vex::Spelling;

TEST(ShownText, LeavesWhatCanBeSeenAlone) {
    for (char const* const text :
         {"", "Orders", "Auftr\u00E4ge \u20AC", "\u65E5\u672C", "\U0001F600",
          "\u05E9\u05DC\u05D5\u05DD", "a\u00A0b\u3000c", "\u0905\u0902", "C:\\n"}) {
        EXPECT_EQ(shownText(text, Spelling::Line), text);
        EXPECT_EQ(shownText(text, Spelling::Json), text);
        EXPECT_EQ(shownText(text, Spelling::Xml), text);
    }
}

TEST(ShownText, SpellsControlCharactersOut) {
    EXPECT_EQ(shownText(std::string("a\0b", 3), Spelling::Line), "a\\u0000b");
    EXPECT_EQ(shownText("\033[2J", Spelling::Line), "\\u001B[2J");
    EXPECT_EQ(shownText("\x7F", Spelling::Line), "\\u007F");
    EXPECT_EQ(shownText("\u0085\u009B", Spelling::Line), "\\u0085\\u009B");
}

TEST(ShownText, SpellsOutWhatTurnsDirectionsOrTakesNoRoom) {
    EXPECT_EQ(shownText("\u202Exml\u202C", Spelling::Line), "\\u202Exml\\u202C");
    EXPECT_EQ(shownText("\u2066\u2069\u200F\u061C", Spelling::Line),
              "\\u2066\\u2069\\u200F\\u061C");
    EXPECT_EQ(shownText("a\u200Bb\u200Dc\uFEFF\u00AD", Spelling::Line),
              "a\\u200Bb\\u200Dc\\uFEFF\\u00AD");
    EXPECT_EQ(shownText("\u2028\u2029", Spelling::Line), "\\u2028\\u2029");
    EXPECT_EQ(shownText("\U000E0041", Spelling::Line), "\\U000E0041");
}

TEST(ShownText, KeepsLinesWhereTheyAreMeant) {
    EXPECT_EQ(shownText("a\nb\tc\r", Spelling::Line), "a\\nb\\tc\\r");
    EXPECT_EQ(shownText("a\nb\tc\r", Spelling::Lines), "a\nb\tc\\r");
    EXPECT_EQ(shownText("\033[1ma\033[0m", Spelling::Lines), "\\u001B[1ma\\u001B[0m");
    EXPECT_EQ(shownText("\033[1ma\033[0m\n", Spelling::Drawn), "\033[1ma\033[0m\n");
    EXPECT_EQ(shownText("\033[2J\033[1", Spelling::Drawn), "\\u001B[2J\\u001B[1");
}

TEST(ShownText, SpellsOutWhatIsNoUtf8) {
    EXPECT_EQ(shownText("a\xFFz", Spelling::Line), "a\\xFFz");
    EXPECT_EQ(shownText("\xC0\x80", Spelling::Line), "\\xC0\\x80");          // longer than need be
    EXPECT_EQ(shownText("\xED\xA0\x80", Spelling::Line), "\\xED\\xA0\\x80"); // half a pair
    EXPECT_EQ(shownText("\xF4\x90\x80\x80", Spelling::Line),
              "\\xF4\\x90\\x80\\x80"); // past the last
    EXPECT_EQ(shownText("\xE2\x80", Spelling::Line), "\\xE2\\x80");
}

TEST(ShownText, KeepsTheMeaningInJsonAndXml) {
    EXPECT_EQ(shownText("{\"a\": \"\u202E\x7F\U000E0041\"}\n", Spelling::Json),
              "{\"a\": \"\\u202e\\u007f\\udb40\\udc41\"}\n");
    EXPECT_EQ(shownText("<a n=\"\u202E\u009B\U000E0041\"/>\n", Spelling::Xml),
              "<a n=\"&#x202E;&#x9B;&#xE0041;\"/>\n");
    EXPECT_EQ(shownText("\xFF", Spelling::Json), "\uFFFD");
    EXPECT_EQ(shownText("\033", Spelling::Xml), "\uFFFD"); // XML has no place for it
}

TEST(ShownText, GivesTheSameInPieces) {
    std::string const text = "a\u202Eb\U000E0041\u20ACc\xE2\x80\033[1m";
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        std::string shown;
        ShownText first(std::string_view(text).substr(0, cut), Spelling::Line, false);
        for (auto piece = first.next(); !piece.empty(); piece = first.next()) {
            shown += piece;
        }
        EXPECT_LT(first.rest().size(), 4U);
        shown += shownText(std::string(first.rest()) + text.substr(cut), Spelling::Line);
        EXPECT_EQ(shown, shownText(text, Spelling::Line)) << cut;
    }
}

} // namespace
