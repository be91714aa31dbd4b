// From a request's parts to what is done about it.

#include "tests/provider/ProviderScene.h"
#include "tests/support/Casts.h"

#include <gtest/gtest.h>

namespace {

using Strings = std::vector<I18NString>;

constexpr char Model[] = R"(
<model id="m" defaultLocale="en">
  <namespace id="n" name="Sales">
    <querySubject id="q" name="Orders"><queryItem id="i" name="Quantity"/></querySubject>
  </namespace>
  <namespace id="n2" name="Archive"/>
  <namespace id="n3" name="Staff"/>
  <securityViews>
    <securityView id="v1"><set kind="included"><item>n</item><item>q</item></set></securityView>
    <securityView id="v2"><set kind="included"><item>i</item></set></securityView>
  </securityViews>
</model>)";

constexpr char Everything[] = "<Property a='*/@name'/><Property a='*/querySubject'/>"
                              "<Property a='*/queryItem'/></Metadata>";
constexpr char WholeTree[] = "<folder name=\"Sales\"><querySubject name=\"Orders\">"
                             "<queryItem name=\"Quantity\"/></querySubject></folder>";
constexpr char StartAlone[] = "<folder name=\"Sales\"/>";

std::string request(std::string const& options) {
    return "<Metadata " + options + ">" + Everything;
}

std::string nameOf(std::string const& options) {
    return "<Metadata Depth='1' " + options + "><Property a='./@name'/></Metadata>";
}

// A scene on a content path, whose user has both views.
struct ContentScene : ProviderScene {
    explicit ContentScene(char const* path = "/content/m") : ProviderScene(Model, path) {
        session.setViews({"v1", "v2"});
    }
};

TEST(RequestEntry, LeavesSecurityAloneOutsideContent) {
    for (char const* const path : {"", "a model", "/content", "/Content/m", " /content/m",
                                   "x/content/m", "xpath:/content/m"}) {
        ProviderScene scene(Model, path);
        EXPECT_EQ(scene.ask(request("")), WholeTree) << path;
        EXPECT_EQ(scene.session.calls().count(Call::GetModelService), 0) << path;
    }
}

TEST(RequestEntry, AnswersInTheSessionsLanguageWhateverTheAuthorsIs) {
    ProviderScene scene(Model);
    for (char const* const language :
         {"authoringLocale='de'", "xml:lang='de'", "authoringLocale='' xml:lang='fr'"}) {
        EXPECT_EQ(scene.ask(request(language)), WholeTree) << language;
    }
}

TEST(RequestEntry, AsksForTheSecurityInformationOfAContentPath) {
    for (char const* const path : {"/content/m", "/content/"}) {
        ContentScene scene(path);
        scene.ask(request(""));
        EXPECT_EQ(scene.session.askedPaths(), Strings{path});
    }
}

TEST(RequestEntry, DropsFiveCharactersOfAMarkedPathAndKeepsSecurityOn) {
    ContentScene scene("path:/any/where");
    scene.ask(request(""));
    EXPECT_EQ(scene.session.askedPaths(), Strings{"/any/where"});
}

TEST(RequestEntry, RefusesATreeThatTheResponseHasNoPlaceForBeforeAnythingIsWritten) {
    ProviderScene scene(Model);
    TestRequest asked("<Metadata><Property a='/@effectiveLocale'/><Property a='*/@name'/>"
                      "</Metadata>");
    TestResponse response;
    KRLIDOM_Node empty = response.result(); // no child that could take the tree
    expectFailure([&] { scene.provider.doRequest(asked.node(), empty); }, 1444379511, "VexMAAction",
                  83, "VexAction::validateParameter");
    EXPECT_EQ(response.text(), "<Response><Result/></Response>");
}

TEST(RequestEntry, StaysOutsideContentOnceAPathWasThere) {
    ContentScene scene;
    scene.provider.Initialize("elsewhere");
    scene.provider.Initialize("/content/m");
    EXPECT_EQ(scene.ask(request("")), WholeTree);
    EXPECT_EQ(scene.session.calls().count(Call::GetModelService), 0);
}

TEST(RequestEntry, RefusesADocumentWithoutMetadata) {
    ProviderScene scene(Model);
    scene.expectRefused("<metadata start_at='[Sales]'/>", 1444379513, 0,
                        "VexMDMaProvider::doRequest");
}

TEST(RequestEntry, FindsMetadataAtOrBelowTheNodeGiven) {
    ProviderScene scene(Model);
    EXPECT_EQ(scene.ask("<r><x/><y>" + nameOf("start_at='[Archive]'") + "</y></r>"),
              "<folder name=\"Archive\"/>");
}

TEST(RequestEntry, StartsAtTheRootNamespaceWithoutAStart) {
    ProviderScene scene(Model);
    EXPECT_EQ(scene.ask(nameOf("start_at='' start_atPath='' start_atRef=''")), StartAlone);
}

TEST(RequestEntry, PrefersTheReferenceToThePathToTheOldStart) {
    ProviderScene scene(Model);
    EXPECT_EQ(scene.ask(nameOf("start_at='[Archive]'")), "<folder name=\"Archive\"/>");
    EXPECT_EQ(scene.ask(nameOf("start_at='[Archive]' start_atPath='[Staff]'")),
              "<folder name=\"Staff\"/>");
    EXPECT_EQ(scene.ask(nameOf("start_at='[Archive]' start_atPath='[Staff]'"
                               " start_atRef='[Sales].[Orders].[Quantity]'")),
              "<queryItem name=\"Quantity\"/>");
}

TEST(RequestEntry, RefusesAMalformedStartAfterTheGlobalEntries) {
    ProviderScene scene(Model);
    TestRequest asked("<Metadata start_at='[Sales'><Property a='/@defaultLocale'/></Metadata>");
    TestResponse response;
    expectFailure([&] { scene.provider.doRequest(asked.node(), response.node()); }, 1170869272,
                  "VexMDMaProvider", 145, "VexMDMaProvider::doRequest");
    EXPECT_EQ(response.text(), "<Response><Result/><defaultLocale>en</defaultLocale></Response>");
}

TEST(RequestEntry, RefusesAMalformedReferenceAndPathInTheSameWay) {
    ProviderScene scene(Model);
    scene.expectRefused(nameOf("start_atRef='Sales' start_at='[Sales]'"), 1170869272, 145,
                        "VexMDMaProvider::doRequest");
    scene.expectRefused(nameOf("start_atPath='[Sales].' start_at='[Sales]'"), 1170869272, 145,
                        "VexMDMaProvider::doRequest");
    scene.expectRefused(nameOf("start_at='  '"), 1170869272, 145, "VexMDMaProvider::doRequest");
}

TEST(RequestEntry, ReadsADepthThatIsNoNumberOrMissingAsZero) {
    ProviderScene scene(Model);
    for (char const* const depth : {"", "Depth=''", "Depth='x'", "Depth='x1'", "Depth='0'"}) {
        EXPECT_EQ(scene.ask(request(depth)), WholeTree) << depth;
    }
}

TEST(RequestEntry, ReadsTheLeadingNumberOfADepth) {
    ProviderScene scene(Model);
    for (char const* const depth : {"1", " 1", "+1", "1x", "1.9", "-5"}) {
        EXPECT_EQ(scene.ask(request(std::string("Depth='") + depth + "'")), StartAlone) << depth;
    }
}

TEST(RequestEntry, ClampsADepthBeyondAnInt) {
    ProviderScene scene(Model);
    EXPECT_EQ(scene.ask(request("Depth='4294967297'")), WholeTree);
    EXPECT_EQ(scene.ask(request("Depth='99999999999999999999'")), WholeTree);
    EXPECT_EQ(scene.ask(request("Depth='-4294967296'")), StartAlone);
    EXPECT_EQ(scene.ask(request("Depth='-99999999999999999999'")), StartAlone);
}

TEST(RequestEntry, ReadsTheAuthoringLocaleWithoutUsingIt) {
    ProviderScene scene(casts::bilingualShop);
    EXPECT_EQ(scene.ask(nameOf("authoringLocale='de'")), StartAlone);
    EXPECT_EQ(scene.ask(nameOf("xml:lang='de'")), StartAlone);
}

TEST(RequestEntry, PutsGlobalEntriesBesideTheFirstChildThatTakesTheTree) {
    ProviderScene scene(Model);
    EXPECT_EQ(scene.askForResponse("<Metadata><Property a='/@effectiveLocale'/>"
                                   "<Property a='./@name'/></Metadata>"),
              "<Response><Result><folder name=\"Sales\"/></Result>"
              "<effectiveLocale>en</effectiveLocale></Response>");
}

TEST(RequestEntry, AnswersAgainAfterAFailure) {
    ContentScene scene;
    scene.expectRefused(nameOf("start_at='[No]'"), 1171025905, 808,
                        "VexMDMaProviderR::ProcessRequest", {"No"});
    scene.session.calls().failAt(Call::GetElementsByTagName, 2);
    expectInjectedFailure([&] { scene.ask(nameOf("")); });
    EXPECT_EQ(scene.ask(nameOf("")), StartAlone);
    EXPECT_EQ(scene.session.calls().count(Call::GetAvailableViews), 1);
}

TEST(RequestedView, IsEveryAvailableOneWithoutANameForIt) {
    ContentScene scene;
    EXPECT_EQ(scene.ask(request("")), WholeTree);
    EXPECT_EQ(scene.ask(request("securityView=''")), WholeTree);
}

TEST(RequestedView, NarrowsTheAnswerToItself) {
    ContentScene scene;
    EXPECT_EQ(scene.ask(request("securityView='v1'")),
              "<folder name=\"Sales\"><querySubject name=\"Orders\"/></folder>");
    EXPECT_EQ(scene.ask(request("securityView='v2'")),
              "<folder name=\"Sales\"><queryItem name=\"Quantity\"/></folder>");
}

TEST(RequestedView, IsRefusedAfterTheGlobalEntriesWhenItIsNotAvailable) {
    ContentScene scene;
    TestRequest asked("<Metadata securityView='v3'><Property a='/@defaultLocale'/></Metadata>");
    TestResponse response;
    expectFailure([&] { scene.provider.doRequest(asked.node(), response.node()); }, 1170551942,
                  "VexMDMaProvider", 241, "VexMDMaProvider::getAccessEngine", {"v1, v2", "v3"});
    EXPECT_EQ(response.text(), "<Response><Result/><defaultLocale>en</defaultLocale></Response>");
}

TEST(RequestedView, PlaysNoPartOutsideContent) {
    ProviderScene scene(Model);
    EXPECT_EQ(scene.ask(request("securityView='v3'")), WholeTree);
}

TEST(RequestedView, NeedsAvailableViewsOnAContentPath) {
    ProviderScene scene(Model, "/content/m");
    VexMDMaProviderHelper const empty{KRLIDOM_Node()};
    expectFailure([&] { scene.provider.getAccessEngine(empty, I18NLocale("en")); }, 1170699671,
                  "VexMDMaProvider", 212, "VexMDMaProvider::getAccessEngine");
}

TEST(RequestedView, LeavesTheEngineUnrestrictedOutsideContent) {
    ProviderScene scene("<model/>");
    VexMDMaProviderHelper const empty{KRLIDOM_Node()};
    VexMDAccessEngine engine = scene.provider.getAccessEngine(empty, I18NLocale("en"));
    EXPECT_TRUE(engine.IsIncluded("anything", false));
}

} // namespace
