// Names in brackets, as paths and references are made of them.

#include "provider/request/VexBracketedName.h"

#include "I18NString.h"

#include <gtest/gtest.h>

namespace {

TEST(BracketedName, IsPutBehindATextOfEitherKind) {
    I18NString text("[Sales]");
    AppendBracketedName(text, u"Orders", true);
    EXPECT_EQ(text.toUtf8(), "[Sales].[Orders]");
    std::u16string units = u"[Sales]";
    AppendBracketedName(units, u"Orders", true);
    EXPECT_EQ(units, u"[Sales].[Orders]");
}

TEST(BracketedName, StandsBehindADotOnlyWhenItIsToldTo) {
    I18NString text;
    AppendBracketedName(text, u"", false);
    EXPECT_EQ(text.toUtf8(), "[]");
    I18NString dotted;
    AppendBracketedName(dotted, u"a", true);
    EXPECT_EQ(dotted.toUtf8(), ".[a]");
}

// covers quirk: closing-bracket-not-doubled
TEST(BracketedName, DoesNotDoubleAClosingBracket) {
    I18NString text("x");
    AppendBracketedName(text, u"a]b", true);
    EXPECT_EQ(text.toUtf8(), "x.[a]b]");
}

} // namespace
