#include "host/import/tabular/ExpressionNames.h"

#include "I18NString.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = vex::ExpressionName::Kind;

/// "Sales" a table, "[x]" a member, "Sales[x]" of a table, "f()" a function.
std::vector<std::string> namesIn(char const* expression) {
    std::vector<std::string> names;
    for (vex::ExpressionName const& name : vex::namesInExpression(expression)) {
        std::string const text = I18NString(std::u16string_view(name.name)).toUtf8();
        std::string const table = I18NString(std::u16string_view(name.table)).toUtf8();
        names.push_back(name.kind == Kind::Table      ? text
                        : name.kind == Kind::Function ? text + "()"
                                                      : table + '[' + text + ']');
    }
    return names;
}

TEST(ExpressionNames, AreThoseOfTablesColumnsMeasuresAndFunctions) {
    EXPECT_THAT(namesIn("SUMX(Sales, 'Unit Prices'[EUR] * [Pieces])"),
                ElementsAre("sumx()", "sales", "unit prices", "unit prices[eur]", "[pieces]"));
}

TEST(ExpressionNames, CompareWithoutCase) {
    EXPECT_THAT(namesIn("[STRASSE] + [straße]"), ElementsAre("[strasse]", "[strasse]"));
}

TEST(ExpressionNames, MayHoldTheMarksThatEndThem) {
    EXPECT_THAT(namesIn("'Bob''s'[a]]b] + [c]]]"), ElementsAre("bob's", "bob's[a]b]", "[c]]"));
}

TEST(ExpressionNames, AWordApartFromTheBracketMayBeNoTable) {
    EXPECT_THAT(namesIn("RETURN [x]"), ElementsAre("return", "return[x]", "[x]"));
}

TEST(ExpressionNames, AFunctionMayStandApartFromItsParentheses) {
    EXPECT_THAT(namesIn("Date\n (1) + Date"), ElementsAre("date()", "date"));
}

TEST(ExpressionNames, CountInCommentsToo) {
    EXPECT_THAT(
        namesIn("1 // don't show 'Pay'[Salary]\n+ [x]"),
        ElementsAre("don", "t", "show", "t show ", "pay", "pay", "[salary]", "salary", "[x]"));
    EXPECT_THAT(namesIn("/* [a] */ 1 -- Pay"), ElementsAre("[a]", "a", "pay"));
    EXPECT_THAT(namesIn("1 /* [a"), ElementsAre("[a]", "a"));
}

TEST(ExpressionNames, CountInLiteralsWhereBracketsOrQuotesMarkThem) {
    EXPECT_THAT(namesIn("\"not \"\" [a] or 'Pay'\" & [b]"), ElementsAre("[a]", "pay", "[b]"));
    EXPECT_THAT(namesIn("\"Pay\""), IsEmpty());
}

TEST(ExpressionNames, MayStandInOpenBracketsOfALiteral) {
    EXPECT_THAT(namesIn("\"[ see [a]\""), ElementsAre("[ see [a]", "[a]"));
    EXPECT_THAT(namesIn("\"[a]]b] [c]\""), ElementsAre("[a]b]", "[a]", "[c]"));
}

TEST(ExpressionNames, AreFoundInTimeByTheLengthOfTheText) {
    std::string const brackets(1'000'000, '[');
    std::string const quotes(1'000'000, '\'');
    EXPECT_EQ(vex::namesInExpression("/*" + brackets + "*/").size(), 1U);
    EXPECT_EQ(vex::namesInExpression("\"" + brackets + "\"").size(), 1U);
    EXPECT_LE(vex::namesInExpression("//" + quotes).size(), 1'000'000U);
    EXPECT_LE(vex::namesInExpression(brackets + quotes).size(), 1'000'000U);
}

TEST(ExpressionNames, EndWithTheTextWhenNothingEndsThem) {
    EXPECT_THAT(namesIn("'a"), ElementsAre("a"));
    EXPECT_THAT(namesIn("[a"), ElementsAre("[a]"));
    EXPECT_THAT(namesIn("x["), ElementsAre("x", "x[]"));
}

TEST(ExpressionNames, AreNoNumbers) {
    EXPECT_THAT(namesIn("1e5 + 2 * 0x1F"), IsEmpty());
}

TEST(ExpressionNames, ArePartedByAnyWhiteSpace) {
    EXPECT_THAT(namesIn("Pay\xC2\xA0+ 1"), ElementsAre("pay"));
}

} // namespace
