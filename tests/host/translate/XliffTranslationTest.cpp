#include "host/translate/XliffTranslation.h"

#include "I18NString.h"
#include "KRLException.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using vex::TranslationFile;
using vex::TranslationMark;

std::string xliffProblemOf(std::string const& xliff) {
    try {
        vex::readXliff(xliff, "t.xlf");
    } catch (KRLDocumentException const& problem) {
        return problem.what();
    }
    return "";
}

/// A file with one group "i1" that holds this from line 2 on.
std::string documentOf(std::string const& units) {
    return R"(<xliff xmlns="urn:oasis:names:tc:xliff:document:2.0" version="2.0" srcLang="en" )"
           R"(trgLang="de"><file id="f"><group id="g" name="i1">)"
           "\n" +
           units + "</group></file></xliff>";
}

TEST(XliffTranslation, HasAGroupForEachObjectAndAUnitForEachText) {
    TranslationFile const file{
        .sourceLocale = I18NLocale(I18NString("en")),
        .targetLocale = I18NLocale(I18NString("de_AT")),
        .original = "m.xml",
        .units = {{"i1", "name", "Orders", "Aufträge", TranslationMark::None, "querySubject"},
                  {"i1", "description", "<&", "", TranslationMark::None, ""},
                  {"i2", "name", "Old", "Alt", TranslationMark::Gone, ""}}};
    EXPECT_EQ(vex::writeXliff(file), R"(<?xml version="1.0" encoding="UTF-8"?>
<xliff xmlns="urn:oasis:names:tc:xliff:document:2.0" version="2.0" srcLang="en" trgLang="de-AT">
  <file id="model" original="m.xml" canResegment="no">
    <group id="g1" name="i1">
      <unit id="u1" name="name">
        <notes>
          <note category="object">querySubject</note>
        </notes>
        <segment state="translated">
          <source xml:space="preserve">Orders</source>
          <target xml:space="preserve">Aufträge</target>
        </segment>
      </unit>
      <unit id="u2" name="description">
        <segment state="initial">
          <source xml:space="preserve">&lt;&amp;</source>
        </segment>
      </unit>
    </group>
    <group id="g2" name="i2">
      <unit id="u3" name="name">
        <notes>
          <note category="mark">gone</note>
        </notes>
        <segment state="initial">
          <source xml:space="preserve">Old</source>
          <target xml:space="preserve">Alt</target>
        </segment>
      </unit>
    </group>
  </file>
</xliff>
)");
}

TEST(XliffTranslation, GivesBackWhatItWrote) {
    TranslationFile const file{
        .sourceLocale = I18NLocale(I18NString("en")),
        .targetLocale = I18NLocale(I18NString("de_AT")),
        .original = "m",
        .units = {{"a [b]]", "name", " x\n\ty ", " \r z ", TranslationMark::Changed, "note <"}}};
    TranslationFile const read = vex::readXliff(vex::writeXliff(file), "t");
    ASSERT_EQ(read.units.size(), 1U);
    EXPECT_EQ(read.units[0].object, "a [b]]");
    EXPECT_EQ(read.units[0].source, " x\n\ty ");
    EXPECT_EQ(read.units[0].target, " \r z ");
    EXPECT_EQ(read.units[0].mark, TranslationMark::Changed);
    EXPECT_EQ(read.units[0].note, "note <");
    EXPECT_EQ(read.targetLocale, I18NLocale(I18NString("de_AT")));
}

TEST(XliffTranslation, WithoutTextsIsAFileStill) {
    TranslationFile const nothing{.sourceLocale = I18NLocale(I18NString("en"))};
    std::string const written = vex::writeXliff(nothing);
    EXPECT_THAT(written, HasSubstr(R"(<unit id="u0" translate="no">)"));
    EXPECT_TRUE(vex::readXliff(written, "t").units.empty());
}

TEST(XliffTranslation, JoinsSegmentsAndWhatStandsBetweenThem) {
    auto const read = vex::readXliff(documentOf(R"(<unit id="u" name="description">
<segment><source>One.</source><target>Eins.</target></segment><ignorable><source> </source></ignorable>
<segment><source>Two.</source><target>Zwei.</target></segment></unit>)"),
                                     "t");
    EXPECT_EQ(read.units.at(0).source, "One. Two.");
    EXPECT_EQ(read.units.at(0).target, "Eins. Zwei.");
}

TEST(XliffTranslation, DropsTheMarkOfWhatSomebodyHasSeenTo) {
    constexpr char const* unit = R"(<unit id="u" name="name"><notes>
<note category="mark">changed</note></notes><segment state="%"><source>a</source>
<target>b</target></segment></unit>)";
    auto const markAt = [&](char const* state) {
        std::string text = unit;
        text.replace(text.find('%'), 1, state);
        return vex::readXliff(documentOf(text), "t").units.at(0).mark;
    };
    EXPECT_EQ(markAt("initial"), TranslationMark::Changed);
    EXPECT_EQ(markAt("translated"), TranslationMark::None);
    EXPECT_EQ(markAt("final"), TranslationMark::None);
}

TEST(XliffTranslation, IsRefusedWhereItIsWrong) {
    EXPECT_THAT(xliffProblemOf("<xliff version='1.2'/>"),
                HasSubstr("t.xlf:1:23: this is no XLIFF of version 2"));
    EXPECT_THAT(xliffProblemOf("<!DOCTYPE xliff><xliff/>"), HasSubstr("remove the DOCTYPE"));
    EXPECT_THAT(
        xliffProblemOf(R"(<xliff xmlns="urn:oasis:names:tc:xliff:document:2.0" version="2.0" )"
                       R"(srcLang="xx"/>)"),
        HasSubstr("srcLang is \"xx\", which is no known language"));
    EXPECT_THAT(xliffProblemOf(documentOf(R"(<unit id="u"/>)")),
                HasSubstr("t.xlf:2:15: the unit is not in a group whose name"));
    EXPECT_THAT(xliffProblemOf(documentOf(R"(<unit id="u" name="name"><segment><source>a</source>
<target>b <pc id="1">c</pc></target></segment></unit>)")),
                HasSubstr("t.xlf:3:22: the target holds the inline element \"pc\""));
    EXPECT_THAT(xliffProblemOf(documentOf(R"(<unit id="u" name="name"><segment><source>a</source>
<target>b</target></segment><segment><source>c</source></segment></unit>)")),
                HasSubstr("t.xlf:2:26: a part of the unit is not translated"));
    std::string const unit =
        R"(<unit id="u" name="name"><segment><source>a</source></segment></unit>)";
    EXPECT_THAT(xliffProblemOf(documentOf(unit + unit)),
                HasSubstr("the name of \"i1\" stands in a unit before"));
}

} // namespace
