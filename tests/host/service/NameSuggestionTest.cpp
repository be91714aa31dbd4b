#include "host/service/NameSuggestion.h"

#include "host/import/xml/ModelLoader.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::shared_ptr<vex::Model const> model() {
    return vex::loadModelText(
        "<model defaultLocale='en'><locales><locale>en</locale><locale>de</locale></locales>"
        "<namespace id='n'><property name='name' locale='en'>Sales</property>"
        "<property name='name' locale='de'>Vertrieb</property>"
        "<folder id='f' name='Facts'><querySubject id='qs.orders' name='Orders'>"
        "<queryItem id='qi.date' name='Order Date'/></querySubject></folder>"
        "<querySubject id='qs.offers' name='Offers'/></namespace></model>",
        "m.xml");
}

std::vector<std::string> utf8(std::vector<vex::Suggestion> const& suggestions) {
    std::vector<std::string> result;
    for (vex::Suggestion const& each : suggestions) {
        result.push_back(each.text.toUtf8());
    }
    return result;
}

std::vector<std::string> objectsFor(char const* text) {
    return utf8(vex::suggestObjects(*model(), text));
}

std::vector<std::string> pathsFor(char const* text, char const* locale) {
    return utf8(vex::suggestPaths(*model(), text, I18NLocale(locale)));
}

TEST(NameSuggestion, FindsTheReferenceThatWasMistyped) {
    EXPECT_THAT(objectsFor("[Sales].[Ordrs]"), ElementsAre("[Sales].[Orders]"));
    EXPECT_THAT(objectsFor("[sales].[orders]"), ElementsAre("[Sales].[Orders]"));
    EXPECT_THAT(objectsFor("[Sale].[Orders].[Order Dat]"),
                ElementsAre("[Sales].[Orders].[Order Date]"));
}

TEST(NameSuggestion, FindsTheReferenceWhoseBracketsAreMissing) {
    EXPECT_THAT(objectsFor("Sales.[Orders]"), ElementsAre("[Sales].[Orders]"));
}

TEST(NameSuggestion, FindsTheIdThatWasMistyped) {
    EXPECT_THAT(objectsFor("qs.order"), ElementsAre("qs.orders"));
}

TEST(NameSuggestion, GivesThoseThatAreNearlyAsNearToo) {
    EXPECT_THAT(objectsFor("qs.ofders"), ElementsAre("qs.orders", "qs.offers"));
}

TEST(NameSuggestion, FindsPathsThroughFoldersInTheirLanguage) {
    EXPECT_THAT(pathsFor("[Sales].[Facts].[Odrers]", "en"),
                ElementsAre("[Sales].[Facts].[Orders]"));
    EXPECT_THAT(pathsFor("[Vertreib].[Facts].[Orders]", "de"),
                ElementsAre("[Vertrieb].[Facts].[Orders]"));
}

TEST(NameSuggestion, FindsWhatAReferenceMeansAsAPathAndAPathAsAReference) {
    EXPECT_THAT(pathsFor("[Sales].[Orders].[Order Date]", "en"),
                ElementsAre("[Sales].[Facts].[Orders].[Order Date]"));
    EXPECT_THAT(objectsFor("[Sales].[Facts].[Orders].[Order Date]"),
                ElementsAre("[Sales].[Orders].[Order Date]"));
}

TEST(NameSuggestion, FindsNamesInAnotherLanguageMixedOrInOtherCase) {
    EXPECT_THAT(pathsFor("[Vertrieb].[Facts].[Orders]", "en"),
                ElementsAre("[Sales].[Facts].[Orders]"));
    EXPECT_THAT(pathsFor("[SALES].[facts].[ORDERS]", "de"),
                ElementsAre("[Vertrieb].[Facts].[Orders]"));
    EXPECT_THAT(objectsFor("[Vertrieb].[orders]"), ElementsAre("[Sales].[Orders]"));
}

TEST(NameSuggestion, FindsWhatANameAloneStandsFor) {
    EXPECT_THAT(objectsFor("Order Date"), ElementsAre("[Sales].[Orders].[Order Date]"));
    EXPECT_THAT(objectsFor("[Orders].[Order Date]"), ElementsAre("[Sales].[Orders].[Order Date]"));
}

TEST(NameSuggestion, FindsThePathOfAnIdRightOrMistyped) {
    EXPECT_THAT(pathsFor("qs.orders", "de"), ElementsAre("[Vertrieb].[Facts].[Orders]"));
    EXPECT_THAT(pathsFor("qs.order", "en"), ElementsAre("[Sales].[Facts].[Orders]"));
}

TEST(NameSuggestion, GivesTheIdWhereTheReferenceIsAnotherObjects) {
    auto const twice = vex::loadModelText(
        "<model defaultLocale='en'><namespace name='A'><folder name='F'><filter id='first' "
        "name='X'/></folder><folder name='G'><filter id='second' name='X'/></folder>"
        "</namespace></model>",
        "m.xml");
    EXPECT_THAT(utf8(vex::suggestObjects(*twice, "[A].[G].[X]")), ElementsAre("second"));
}

TEST(NameSuggestion, TakesWhatMayNotBeNamedForMissing) {
    auto const loaded = model();
    VEX_HANDLE const orders = loaded->findById("qs.orders");
    auto const allButOrders = [&](Vex_Handle_Collection const& objects) {
        std::vector<bool> verdicts;
        for (VEX_HANDLE const object : objects) {
            verdicts.push_back(object != orders);
        }
        return verdicts;
    };
    auto const nothing = [](Vex_Handle_Collection const&) { return std::vector<bool>(); };
    EXPECT_THAT(utf8(vex::suggestObjects(*loaded, "qs.ofders", allButOrders)),
                ElementsAre("qs.offers"));
    // What is right and hidden is not told from what is wrong.
    EXPECT_THAT(utf8(vex::suggestObjects(*loaded, "qs.orders", allButOrders)),
                ElementsAre("qs.offers"));
    EXPECT_THAT(utf8(vex::suggestPaths(*loaded, "[Sales].[Orders]", I18NLocale("en"), nothing)),
                IsEmpty());
}

TEST(NameSuggestion, SaysNothingAboutWhatIsRightOrFarFromEverything) {
    EXPECT_THAT(objectsFor("[Sales].[Orders]"), IsEmpty());
    EXPECT_THAT(objectsFor("qs.orders"), IsEmpty());
    EXPECT_THAT(objectsFor("[Production].[Machines]"), IsEmpty());
    EXPECT_THAT(objectsFor(""), IsEmpty());
}

TEST(NameSuggestion, AsksForOneOfThem) {
    using Texts = std::vector<std::string>;
    EXPECT_EQ(vex::toQuestion(Texts{}), "");
    EXPECT_EQ(vex::toQuestion(Texts{"a"}), "did you mean a?");
    EXPECT_EQ(vex::toQuestion(Texts{"a", "b", "c"}), "did you mean a, b or c?");
}

} // namespace
