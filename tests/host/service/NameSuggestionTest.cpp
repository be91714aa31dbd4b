#include "host/service/NameSuggestion.h"

#include "host/import/xml/ModelLoader.h"
#include "host/store/image/Budget.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

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

/// Tells of each object whether it is another than those.
vex::MayBeNamed allBut(std::vector<VEX_HANDLE> const& hidden) {
    return [hidden](Vex_Handle_Collection const& objects) {
        std::vector<bool> verdicts;
        for (VEX_HANDLE const object : objects) {
            verdicts.push_back(std::find(hidden.begin(), hidden.end(), object) == hidden.end());
        }
        return verdicts;
    };
}

TEST(NameSuggestion, GivesNoTextThatNamesSomethingHiddenOnTheWay) {
    auto const loaded = model();
    auto const folderHidden = allBut({loaded->findById("f")});
    auto const ordersHidden = allBut({loaded->findById("qs.orders")});
    auto const namespaceHidden = allBut({loaded->findById("n")});
    I18NLocale const english("en");
    EXPECT_THAT(utf8(vex::suggestPaths(*loaded, "[Sales].[Facts].[Odrers]", english, folderHidden)),
                IsEmpty());
    EXPECT_THAT(utf8(vex::suggestPaths(*loaded, "[Sales].[Orders]", english, folderHidden)),
                Not(testing::Contains(HasSubstr("Facts"))));
    // A reference does not name the folder.
    EXPECT_THAT(utf8(vex::suggestObjects(*loaded, "[Sales].[Ordrs]", folderHidden)),
                ElementsAre("[Sales].[Orders]"));
    EXPECT_THAT(utf8(vex::suggestObjects(*loaded, "Order Date", ordersHidden)), IsEmpty());
    EXPECT_THAT(utf8(vex::suggestObjects(*loaded, "[Sale].[Orders]", namespaceHidden)), IsEmpty());
    // What was found by its id has that.
    EXPECT_THAT(utf8(vex::suggestObjects(*loaded, "qi.dat", namespaceHidden)),
                ElementsAre("qi.date"));
    EXPECT_THAT(utf8(vex::suggestPaths(*loaded, "qi.dat", english, ordersHidden)),
                ElementsAre("qi.date"));
}

TEST(NameSuggestion, GivesNothingForATextThatNobodyTypes) {
    vex::Budget const budget({});
    EXPECT_THAT(objectsFor(std::string(30'000, 'x').c_str()), IsEmpty());
    EXPECT_THAT(pathsFor(std::string(30'000, 'x').c_str(), "en"), IsEmpty());
    EXPECT_EQ(budget.stepsDone(), 0U);
}

/// So many query subjects that are alike, each in as many namespaces as given.
std::shared_ptr<vex::Model const> alike(int count, int levels) {
    std::string text = "<model defaultLocale='en'>";
    for (int level = 0; level < levels; ++level) {
        text += "<namespace name='Sales'>";
    }
    for (int i = 0; i < count; ++i) {
        text += "<querySubject id='q" + std::to_string(i) + "' name='Orders'/>";
    }
    for (int level = 0; level < levels; ++level) {
        text += "</namespace>";
    }
    return vex::loadModelText(text + "</model>", "m.xml");
}

TEST(NameSuggestion, WorkIsBoundedHoweverManyAreAlikeAndHoweverDeepTheyStand) {
    constexpr std::size_t mostSteps = 250'000;
    for (auto const& loaded : {alike(100'000, 1), alike(2'000, 500)}) {
        std::size_t asked = 0;
        vex::MayBeNamed const count = [&](Vex_Handle_Collection const& objects) {
            asked += objects.size();
            return std::vector<bool>(objects.size(), true);
        };
        vex::Budget const budget({});
        EXPECT_THAT(vex::suggestObjects(*loaded, "[Sales].[Ordesr]", count), Not(IsEmpty()));
        vex::suggestPaths(*loaded, "[Sales].[Ordesr]", I18NLocale("en"), count);
        EXPECT_LT(budget.stepsDone(), 2 * mostSteps);
        EXPECT_LT(asked, 2'000U);
    }
}

TEST(NameSuggestion, GivesNothingAndRaisesNothingOnceTheCallIsCancelled) {
    auto const loaded = model();
    std::atomic<bool> const cancelled{true};
    vex::Budget const budget({.cancelled = &cancelled});
    EXPECT_THAT(vex::suggestObjects(*loaded, "[Sales].[Ordrs]"), IsEmpty());
    EXPECT_THAT(vex::suggestPaths(*loaded, "[Sales].[Ordrs]", I18NLocale("en")), IsEmpty());
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
