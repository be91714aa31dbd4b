#include "host/catalogue/Catalogue.h"

#include "KRLException.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using vex::Catalogue;
using vex::Diagnostic;
using vex::Diagnostics;

constexpr char const* wholeCatalogue = R"(<?xml version="1.0" encoding="UTF-8"?>
<catalog>
  <!-- the only one -->
  <model path="/content/retail" file="retail.model.xml">
    <package value="Retail">
      <property name="screenTip" locale="en">Retail sales</property>
      <property name="screenTip" locale="de-AT"> Vertrieb  </property>
      <property name="screenTip">Anything</property>
      <property name="value" locale="de">Handel</property>
      <property name="description" locale="de"/>
    </package>
    <grant role="clerk" view="v2"/>
    <grant role="boss" view="v1"/>
    <grant role="boss" view="v2"/>
  </model>
  <model path="/content/other" file="/models/other.xml"/>
  <user name="ann"><role> clerk </role><role>boss</role></user>
  <user name="bob"/>
</catalog>)";

std::shared_ptr<Catalogue const> readText(std::string_view text, Diagnostics& found) {
    return vex::readCatalogueText(text, "c.xml", "/folder", found);
}

std::shared_ptr<Catalogue const> readWhole() {
    Diagnostics found;
    auto catalogue = readText(wholeCatalogue, found);
    EXPECT_TRUE(found.empty());
    return catalogue;
}

std::vector<std::string> findings(std::string_view text) {
    Diagnostics found;
    EXPECT_EQ(readText(text, found), nullptr);
    std::vector<std::string> texts;
    for (Diagnostic const& each : found) {
        EXPECT_FALSE(each.rule.empty());
        texts.push_back(toString(each));
    }
    return texts;
}

I18NString packageText(char const* name, char const* locale) {
    auto const catalogue = readWhole();
    return catalogue->models[0].package.at(name).find(I18NLocale(locale));
}

TEST(Catalogue, FindsModelsByPathAndUsersByName) {
    auto const catalogue = readWhole();
    EXPECT_EQ(catalogue->findModel("/content/other"), &catalogue->models[1]);
    EXPECT_EQ(catalogue->findModel("/content"), nullptr);
    EXPECT_EQ(catalogue->findUser("bob"), &catalogue->users[1]);
    EXPECT_EQ(catalogue->findUser("Bob"), nullptr);
}

TEST(Catalogue, TakesModelFilesAsRelativeToItsOwnFolder) {
    auto const catalogue = readWhole();
    EXPECT_EQ(catalogue->models[0].file, "/folder/retail.model.xml");
    EXPECT_EQ(catalogue->models[1].file, "/models/other.xml");
}

TEST(Catalogue, KeepsRolesTrimmedAndInOrder) {
    EXPECT_THAT(readWhole()->users[0].roles, ElementsAre("clerk", "boss"));
    EXPECT_TRUE(readWhole()->users[1].roles.empty());
}

TEST(Catalogue, GrantsEachViewOnceAndAscending) {
    auto const catalogue = readWhole();
    EXPECT_THAT(availableViews(catalogue->models[0], catalogue->users[0]), ElementsAre("v1", "v2"));
    EXPECT_TRUE(availableViews(catalogue->models[0], catalogue->users[1]).empty());
    EXPECT_TRUE(availableViews(catalogue->models[1], catalogue->users[0]).empty());
}

TEST(Catalogue, FindsTheGrantsOfACopyAnew) {
    Catalogue copy = *readWhole();
    EXPECT_THAT(availableViews(copy.models[0], copy.users[0]), ElementsAre("v1", "v2"));
    Catalogue other = copy;
    other.models[0].grants = {{"clerk", "v9", 0, 0}, {"boss", "v3", 0, 0}, {"clerk", "v1", 0, 0}};
    EXPECT_THAT(availableViews(other.models[0], other.users[0]), ElementsAre("v1", "v3", "v9"));
    copy = other;
    EXPECT_THAT(availableViews(copy.models[0], copy.users[0]), ElementsAre("v1", "v3", "v9"));
    EXPECT_TRUE(availableViews(copy.models[0], {"eve", {"cler", "clerks", ""}}).empty());
}

TEST(Catalogue, AnswersAPackagePropertyForTheLocaleItself) {
    EXPECT_EQ(packageText("screenTip", "de_AT"), "Vertrieb");
}

TEST(Catalogue, AnswersAPackagePropertyForTheNearestParentLocale) {
    EXPECT_EQ(packageText("screenTip", "en_GB"), "Retail sales");
}

TEST(Catalogue, AnswersTheUnlocalisedPackagePropertyForAnyOtherLocale) {
    EXPECT_EQ(packageText("screenTip", "de"), "Anything");
    EXPECT_EQ(packageText("screenTip", ""), "Anything");
}

TEST(Catalogue, AnswersWithNothingForALocaleWhoseValueHasNoText) {
    EXPECT_EQ(packageText("description", "de"), "");
}

TEST(Catalogue, AnswersWithNothingWhenNoLocaleFits) {
    EXPECT_EQ(packageText("description", "en"), "");
}

TEST(Catalogue, LocalisesThePackageValueAsAPropertyNamedValue) {
    EXPECT_EQ(packageText("value", "de"), "Handel");
    EXPECT_EQ(packageText("value", "fr"), "Retail");
}

TEST(Catalogue, ReportsEveryErrorWithItsPlace) {
    EXPECT_THAT(findings("<catalog>\n"
                         "  <model path='/content/a' file='a.xml' owner='me'/>\n"
                         "  <server><deep/></server>\n"
                         "  <user/>\n"
                         "</catalog>"),
                ElementsAre("c.xml:2:53: error: \"model\" has no attribute \"owner\"",
                            "c.xml:3:11: error: \"server\" has no place in \"catalog\"",
                            "c.xml:4:10: error: \"user\" needs the attribute \"name\""));
}

TEST(Catalogue, RefusesTextsThatNoAnswerCanHold) {
    auto const refused = [](std::string const& place) {
        return ElementsAre("c.xml:" + place +
                           ": error: a text holds U+0001, for which XML 1.0, and so "
                           "an answer, has no place; remove it");
    };
    std::string const start = "<?xml version='1.1'?><catalog>\n";
    std::string const model = start + "<model path='/m' file='m.xml'>";
    EXPECT_THAT(findings(start + "<user name='a&#1;'/></catalog>"), refused("2:21"));
    EXPECT_THAT(findings(start + "<user name='a'><role>&#1;</role></user></catalog>"),
                refused("2:33"));
    EXPECT_THAT(findings(model + "<package value='&#1;'/></model></catalog>"), refused("2:54"));
    EXPECT_THAT(findings(model + "<package><property name='screenTip'>&#1;b</property></package>"
                                 "</model></catalog>"),
                refused("2:83"));
    EXPECT_THAT(findings(model + "<grant role='r' view='&#1;'/></model></catalog>"),
                refused("2:60"));
}

struct BadCatalogue {
    char const* what;
    char const* text;
    char const* rule;
};

void PrintTo(BadCatalogue const& bad, std::ostream* out) {
    *out << bad.what;
}

class BadCatalogues : public testing::TestWithParam<BadCatalogue> {};

TEST_P(BadCatalogues, AreRefusedWithARuleAndALine) {
    Diagnostics found;
    EXPECT_EQ(readText(GetParam().text, found), nullptr);
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found[0].rule, GetParam().rule);
    EXPECT_EQ(found[0].severity, vex::Severity::Error);
    EXPECT_GT(found[0].line, 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Catalogue, BadCatalogues,
    testing::Values(
        BadCatalogue{"not well-formed", "<catalog><user name='a'></catalog>",
                     "catalogue-unreadable"},
        BadCatalogue{"a document type", "<!DOCTYPE catalog><catalog/>", "catalogue-unreadable"},
        BadCatalogue{"another root", "<model/>", "catalogue-element"},
        BadCatalogue{"an unknown element", "<catalog><users/></catalog>", "catalogue-element"},
        BadCatalogue{"a role outside a user", "<catalog><role>a</role></catalog>",
                     "catalogue-element"},
        BadCatalogue{"an unknown attribute", "<catalog version='1'/>", "catalogue-attribute"},
        BadCatalogue{"a model without file", "<catalog><model path='/content/a'/></catalog>",
                     "catalogue-attribute"},
        BadCatalogue{"an empty path", "<catalog><model path='' file='f'/></catalog>",
                     "catalogue-attribute"},
        BadCatalogue{"a grant without view",
                     "<catalog><model path='p' file='f'><grant role='r'/></model></catalog>",
                     "catalogue-attribute"},
        BadCatalogue{"one path twice",
                     "<catalog><model path='p' file='f'/><model path='p' file='g'/></catalog>",
                     "catalogue-model-twice"},
        BadCatalogue{"one user twice", "<catalog><user name='a'/><user name='a'/></catalog>",
                     "catalogue-user-twice"},
        BadCatalogue{"two packages",
                     "<catalog><model path='p' file='f'><package/><package/></model></catalog>",
                     "catalogue-package-twice"},
        BadCatalogue{
            "two values for one locale",
            "<catalog><model path='p' file='f'><package><property name='a' locale='de-AT'/>"
            "<property name='a' locale='de_AT'/></package></model></catalog>",
            "catalogue-property-twice"},
        BadCatalogue{"an unknown locale",
                     "<catalog><model path='p' file='f'><package><property name='a' "
                     "locale='qqqqqqqqq'/></package></model></catalog>",
                     "catalogue-locale"},
        BadCatalogue{"a role without name", "<catalog><user name='a'><role/></user></catalog>",
                     "catalogue-role"},
        BadCatalogue{"stray text", "<catalog>text</catalog>", "catalogue-text"}));

TEST(Catalogue, RaisesItsFirstErrorWhenItIsLoaded) {
    try {
        vex::loadCatalogue("/nowhere/catalog.xml");
        FAIL() << "nothing was raised";
    } catch (KRLDocumentException const& problem) {
        EXPECT_THAT(problem.what(), testing::HasSubstr("/nowhere/catalog.xml"));
    }
}

} // namespace
