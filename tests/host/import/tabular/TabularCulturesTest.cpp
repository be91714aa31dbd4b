#include "tests/host/import/ImportedText.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

/// A table T with a column A in the folder F\G, translated into a culture.
ImportedText translated(std::string const& culture, std::string const& column,
                        std::string const& model = R"("culture":"en-US")") {
    return ImportedText(
        R"({"model":{)" + model +
        R"(,"tables":[{"name":"T","columns":[{"name":"A","displayFolder":"F\\G"}]}],"cultures":[{"name":")" +
        culture +
        R"(","translations":{"model":{"name":"M","tables":[{"name":"t","columns":[{"name":"a",)" +
        column + "}]}]}}}]}}");
}

TEST(TabularCultures, BecomeLanguagesOfTheModel) {
    EXPECT_THAT(translated("de-DE", R"("translatedCaption":"Ä")").model(),
                HasSubstr("<locale>en_US</locale>\n    <locale>de_DE</locale>"));
}

TEST(TabularCultures, TranslateNamesDescriptionsAndFolders) {
    auto const imported =
        translated("de-DE", R"("translatedCaption":"Ä","translatedDescription":" Text ",
                               "translatedDisplayFolder":"O\\P")");
    EXPECT_THAT(imported.model(), HasSubstr(R"(name="F">
        <property name="name" locale="de_DE">O</property>)"));
    EXPECT_THAT(imported.model(), HasSubstr(R"(name="G">
          <property name="name" locale="de_DE">P</property>)"));
    EXPECT_THAT(imported.model(), HasSubstr(R"(name="A" usage="attribute">
            <property name="name" locale="de_DE">Ä</property>
            <property name="description" locale="de_DE">Text</property>)"));
}

TEST(TabularCultures, TellOfFoldersThatDoNotFit) {
    EXPECT_EQ(
        translated("de", R"("translatedDisplayFolder":"O")").reasonFor("translatedDisplayFolder"),
        "it has more or fewer folders than the object is in");
    EXPECT_EQ(
        translated("de", R"("translatedDisplayFolder":"")").reasonFor("translatedDisplayFolder"),
        "it is empty");
}

TEST(TabularCultures, TellWhenTwoObjectsNameOneFolderDifferently) {
    ImportedText const imported(R"({"model":{"tables":[{"name":"T","columns":[
        {"name":"A","displayFolder":"F"},{"name":"B","displayFolder":"F"},{"name":"C","displayFolder":"F"}]}],
        "cultures":[{"name":"de","translations":{"model":{"tables":[{"name":"T","columns":[
        {"name":"A","translatedDisplayFolder":"O"},{"name":"B","translatedDisplayFolder":"O"},
        {"name":"C","translatedDisplayFolder":"P"}]}]}}}]}})");
    EXPECT_EQ(imported.account().mappedOf("translatedDisplayFolder"), 2U);
    EXPECT_EQ(imported.reasonFor("translatedDisplayFolder"),
              "another object names the same folder differently");
    EXPECT_THAT(imported.model(), HasSubstr("<property name=\"name\" locale=\"de\">O</property>"));
}

TEST(TabularCultures, TheOneOfTheModelIsTheDefaultLanguage) {
    auto const imported = translated("de-DE", R"("translatedCaption":"Ä")", R"("culture":"fr-CH")");
    EXPECT_THAT(imported.model(), HasSubstr("defaultLocale=\"fr_CH\""));
}

TEST(TabularCultures, WithoutOneOfTheModelThatOfTheRequestIsTheDefaultLanguage) {
    vex::ImportRequest request;
    request.language = "ja";
    ImportedText const imported(R"({"model":{"tables":[]}})", request);
    EXPECT_THAT(imported.model(), HasSubstr("defaultLocale=\"ja\""));
}

TEST(TabularCultures, DoNotRenameWhatExpressionsNameInTheDefaultLanguage) {
    auto const imported = translated("en-US", R"("translatedCaption":"Nice A")");
    EXPECT_THAT(imported.model(), Not(HasSubstr("Nice A")));
    EXPECT_THAT(imported.reasonFor("translatedCaption"), HasSubstr("names stay"));
    EXPECT_EQ(translated("en-US", R"("translatedCaption":"A")").reasonFor("translatedCaption"), "");
}

TEST(TabularCultures, AMoreGeneralOneDoesNotTakeThePlaceOfTheDefaultLanguage) {
    EXPECT_THAT(translated("en", R"("translatedCaption":"Nice A")").model(), HasSubstr(R"(
            <property name="name" locale="en">Nice A</property>
            <property name="name" locale="en_US">A</property>)"));
}

TEST(TabularCultures, TellOfLanguagesThatDoNotExist) {
    auto const imported = translated("qqq-QQ", R"("translatedCaption":"Ä")");
    EXPECT_TRUE(imported.isWritten());
    EXPECT_EQ(imported.reasonFor("culture"), "no language has that name");
}

TEST(TabularCultures, TellOfASecondTextForOneLanguage) {
    ImportedText const imported(R"({"model":{"tables":[{"name":"T"}],"cultures":[
        {"name":"de-DE","translations":{"model":{"tables":[{"name":"T","translatedCaption":"X"}]}}},
        {"name":"de_de","translations":{"model":{"tables":[{"name":"T","translatedCaption":"Y"}]}}}]}})");
    EXPECT_TRUE(imported.isWritten());
    EXPECT_EQ(imported.reasonFor("translatedCaption"), "there is one for this language already");
}

TEST(TabularCultures, TellOfThingsThatTheModelLacks) {
    ImportedText const imported(R"({"model":{"tables":[],"cultures":[{"name":"de","translations":
        {"model":{"tables":[{"name":"gone","translatedCaption":"X"}],
        "perspectives":[{"name":"P"}]}}}]}})");
    EXPECT_EQ(imported.reasonFor("translated object"), "the model has no such thing");
    EXPECT_EQ(imported.account().readOf("translated perspective"), 1U);
}

} // namespace
