#include "host/translate/CsvTranslation.h"

#include "I18NString.h"
#include "KRLException.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using vex::TranslationFile;
using vex::TranslationMark;

TranslationFile fileOf(std::vector<vex::TranslationUnit> units) {
    return {.sourceLocale = I18NLocale(I18NString("en")),
            .targetLocale = I18NLocale(I18NString("de_AT")),
            .original = "",
            .units = std::move(units)};
}

std::string problemOf(std::string const& csv) {
    try {
        vex::readCsv(csv, "t.csv");
    } catch (KRLDocumentException const& problem) {
        return problem.what();
    }
    return "";
}

std::string const head = "object,property,source,target\r\n";

TEST(CsvTranslation, HasAHeadAndARowForEachText) {
    EXPECT_EQ(
        vex::writeCsv(fileOf(
            {{"i1", "name", "Orders", "Aufträge", TranslationMark::None, "querySubject in Sales"},
             {"i1", "description", "one, \"two\"\nthree", "", TranslationMark::Changed, ""}})),
        "object,property,source (en),target (de_AT),mark,note\r\n"
        "i1,name,Orders,Aufträge,,querySubject in Sales\r\n"
        "i1,description,\"one, \"\"two\"\"\nthree\",,changed,\r\n");
}

TEST(CsvTranslation, GivesBackEveryTextThatItWrote) {
    for (char const* const text :
         {"=1+2", "+1", "-1", "@x", "\tx", "'=x", "''x", "'s avonds", "a;b", "\"", "ä\n店", "'"}) {
        TranslationFile const read = vex::readCsv(
            vex::writeCsv(fileOf({{text, "name", text, text, TranslationMark::Gone, text}})), "t");
        ASSERT_EQ(read.units.size(), 1U) << text;
        EXPECT_EQ(read.units[0].object, text);
        EXPECT_EQ(read.units[0].source, text);
        EXPECT_EQ(read.units[0].target, text);
        EXPECT_EQ(read.units[0].note, text);
        EXPECT_EQ(read.units[0].mark, TranslationMark::Gone);
        EXPECT_EQ(read.targetLocale, I18NLocale(I18NString("de_AT")));
    }
}

TEST(CsvTranslation, NeedNotSayItsLanguages) {
    TranslationFile const read = vex::readCsv(vex::writeCsv(vex::readCsv(head, "t")), "t");
    EXPECT_EQ(read.targetLocale, std::nullopt);
    EXPECT_TRUE(read.units.empty());
}

TEST(CsvTranslation, EndsLinesInsideCellsInOneWay) {
    TranslationFile const read = vex::readCsv(head + "a,name,\"b\r\r\nc\",\"d\r\ne\"\r\n", "t");
    EXPECT_EQ(read.units.at(0).source, "b\nc");
    EXPECT_EQ(read.units.at(0).target, "d\ne");
}

TEST(CsvTranslation, WritesNothingThatASpreadsheetTakesForAFormula) {
    std::string const csv = vex::writeCsv(
        fileOf({{"i", "name", "=HYPERLINK(1)", "@SUM(2)", TranslationMark::None, ""}}));
    EXPECT_THAT(csv, HasSubstr("i,name,'=HYPERLINK(1),'@SUM(2),"));
}

TEST(CsvTranslation, IsReadAsSpreadsheetsSaveIt) {
    TranslationFile const read = vex::readCsv("\xEF\xBB\xBFtarget;comment;property;object;source\n"
                                              "\"zwei\r\nZeilen\";mine;name;i1;two\n\nx;;name;i2;y",
                                              "t.csv");
    ASSERT_EQ(read.units.size(), 2U);
    EXPECT_EQ(read.units[0].target, "zwei\nZeilen");
    EXPECT_EQ(read.units[0].position.line, 3U);
    EXPECT_EQ(read.units[1].object, "i2");
    EXPECT_EQ(read.units[1].position.line, 5U);
    EXPECT_EQ(read.targetLocale, std::nullopt);
}

TEST(CsvTranslation, IsRefusedWhereItIsWrong) {
    EXPECT_THAT(problemOf(""), HasSubstr("t.csv:1:1: the first line names no column \"object\""));
    EXPECT_THAT(problemOf("object,property,source\r\n"), HasSubstr("names no column \"target\""));
    EXPECT_THAT(problemOf("object,object,property,source,target\n"),
                HasSubstr("t.csv:1:8: the column \"object\" stands twice"));
    EXPECT_THAT(problemOf("object,property,source,target (xx)\n"),
                HasSubstr("t.csv:1:24: the column is of the language \"xx\", which is unknown"));
    EXPECT_THAT(problemOf(head + "a,name,b\r\n"), HasSubstr("t.csv:2:1: the line has 3 cells"));
    EXPECT_THAT(problemOf(head + "a,name,\"b,c\r\n"),
                HasSubstr("t.csv:2:8: the quote that begins here has no end"));
    EXPECT_THAT(problemOf(head + "a,name,\"b\"x,c\r\n"), HasSubstr("t.csv:2:11: something stands"));
    EXPECT_THAT(problemOf(head + "a,name,b\"c,d\r\n"), HasSubstr("t.csv:2:9: a quote stands"));
    EXPECT_THAT(problemOf(head + ",name,b,c\r\n"),
                HasSubstr("t.csv:2:1: the line names no object"));
    EXPECT_THAT(problemOf(head + "a,name,b,c\r\na,name,b,d\r\n"),
                HasSubstr("t.csv:3:1: the name of \"a\" stands in a line before"));
    EXPECT_THAT(problemOf(head + "a,name,b,\xFF\r\n"), HasSubstr("is not UTF-8"));
}

} // namespace
