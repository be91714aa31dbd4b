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

std::vector<std::string> utf8(std::vector<I18NString> const& texts) {
    std::vector<std::string> result;
    for (I18NString const& text : texts) {
        result.push_back(text.toUtf8());
    }
    return result;
}

std::vector<std::string> objectsFor(char const* text) {
    return utf8(vex::suggestObjects(*model(), text));
}

std::vector<std::string> pathsFor(char const* text, char const* locale) {
    return utf8(vex::suggestPaths(*model(), text, I18NLocale(locale)));
}

TEST(EditDistance, CountsLettersPutInLeftOutAndExchanged) {
    EXPECT_EQ(vex::editDistance(u"orders", u"orders", 3), 0U);
    EXPECT_EQ(vex::editDistance(u"orders", u"order", 3), 1U);
    EXPECT_EQ(vex::editDistance(u"orders", u"borders", 3), 1U);
    EXPECT_EQ(vex::editDistance(u"orders", u"ordres", 3), 2U);
    EXPECT_EQ(vex::editDistance(u"", u"abc", 3), 3U);
}

TEST(EditDistance, TakesUpperAndLowerCaseAsTheSame) {
    EXPECT_EQ(vex::editDistance(u"ORDERS \u00C4", u"orders \u00E4", 3), 0U);
}

TEST(EditDistance, StopsPastItsLimit) {
    EXPECT_EQ(vex::editDistance(u"abcdefgh", u"ijklmnop", 3), 4U);
    EXPECT_EQ(vex::editDistance(u"a", u"abcdefgh", 3), 4U);
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

TEST(NameSuggestion, SaysNothingAboutWhatIsRightOrFarFromEverything) {
    EXPECT_THAT(objectsFor("[Sales].[Orders]"), IsEmpty());
    EXPECT_THAT(objectsFor("qs.orders"), IsEmpty());
    EXPECT_THAT(objectsFor("[Production].[Machines]"), IsEmpty());
    EXPECT_THAT(objectsFor(""), IsEmpty());
}

TEST(NameSuggestion, AsksForOneOfThem) {
    EXPECT_EQ(vex::toQuestion({}), "");
    EXPECT_EQ(vex::toQuestion({"a"}), "did you mean a?");
    EXPECT_EQ(vex::toQuestion({"a", "b", "c"}), "did you mean a, b or c?");
}

} // namespace
