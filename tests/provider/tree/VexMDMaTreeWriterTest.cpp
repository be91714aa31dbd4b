// The tree of elements below a start object: attributes, members, depth.

#include "tests/provider/ProviderScene.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr char Model[] = R"(
<model id="m" defaultLocale="en">
  <namespace id="n" name="Sales">
    <folder id="f" name="Facts" note="">
      <querySubject id="q" name="Orders" usage="fact">
        <queryItem id="i" name="Quantity" usage="fact"/><queryItem id="i2" name="Price"/>
      </querySubject>
    </folder>
    <querySubject id="q2" name="A]b"><property name="screenTip" locale="en">Tip</property>
      <property name="screenTip" locale="de">Hinweis</property><property name="list">
      <property name="entry">1</property></property><queryItem id="i3" name="C"/></querySubject>
    <namespace id="inner" name="Inner"><filter id="x" name="Open"/></namespace>
    <querySubject id="q3"/>
  </namespace>
</model>)";

constexpr char Collections[] = "<Property a='*/folder'/><Property a='*/querySubject'/>"
                               "<Property a='*/queryItem'/><Property a='*/filter'/></Metadata>";

std::string tree(std::string const& options, std::string const& properties) {
    return "<Metadata " + options + ">" + properties + Collections;
}

class Tree : public testing::Test {
protected:
    ProviderScene scene{Model};
};

TEST_F(Tree, HasAnElementForEachObjectNamedAfterItsClass) {
    EXPECT_EQ(scene.ask(tree("", "<Property a='*/@ID'/>")),
              R"(<folder ID="n"><folder ID="f"><querySubject ID="q"><queryItem ID="i"/>)"
              R"(<queryItem ID="i2"/></querySubject></folder><querySubject ID="q2">)"
              R"(<queryItem ID="i3"/></querySubject><querySubject ID="q3"/><folder ID="inner">)"
              R"(<filter ID="x"/></folder></folder>)");
}

TEST_F(Tree, WritesMembersCollectionAfterCollectionAsRequested) {
    EXPECT_EQ(scene.ask("<Metadata Depth='2'><Property a='*/@ID'/><Property a='*/namespace'/>"
                        "<Property a='*/querySubject'/><Property a='*/folder'/></Metadata>"),
              R"(<folder ID="n"><folder ID="inner"/><querySubject ID="q2"/>)"
              R"(<querySubject ID="q3"/><folder ID="f"/><folder ID="inner"/></folder>)");
}

TEST_F(Tree, EndsAtTheDepth) {
    std::string const ids = "<Property a='*/@ID'/>";
    EXPECT_EQ(scene.ask(tree("Depth='1'", ids)), R"(<folder ID="n"/>)");
    EXPECT_EQ(scene.ask(tree("Depth='2' start_at='[Sales].[Facts]'", ids)),
              R"(<folder ID="f"><querySubject ID="q"/></folder>)");
    EXPECT_EQ(scene.ask(tree("Depth='0' start_at='[Sales].[Facts]'", ids)),
              R"(<folder ID="f"><querySubject ID="q"><queryItem ID="i"/><queryItem ID="i2"/>)"
              R"(</querySubject></folder>)");
    EXPECT_EQ(scene.ask(tree("Depth='-1' start_at='[Sales].[Facts]'", ids)), R"(<folder ID="f"/>)");
}

TEST_F(Tree, LeavesOutAttributesWithoutAValue) {
    EXPECT_EQ(scene.ask(tree("Depth='2' start_at='[Sales].[Facts]'",
                             "<Property a='*/@name'/><Property a='*/@usage'/>"
                             "<Property a='*/@note'/><Property a='*/@nothing'/>")),
              R"(<folder name="Facts"><querySubject name="Orders" usage="fact"/></folder>)");
}

TEST_F(Tree, LeavesOutAnObjectWithoutAttributesWithAllItsMembers) {
    EXPECT_EQ(scene.ask(tree("", "<Property a='*/@usage'/>")), "");
    EXPECT_EQ(scene.ask(tree("start_at='[Sales].[Facts]'",
                             "<Property a='folder/@ID'/><Property a='queryItem/@ID'/>")),
              R"(<folder ID="f"/>)");
    EXPECT_EQ(scene.ask(tree("Depth='1'", "")), "");
}

TEST_F(Tree, ReadsPropertiesInTheRequestsLocale) {
    std::string const request =
        tree("Depth='1' start_at='[Sales].[A]]b]'", "<Property a='./@screenTip'/>");
    EXPECT_EQ(scene.ask(request), R"(<querySubject screenTip="Tip"/>)");
    scene.session.setLocale("de_AT");
    EXPECT_EQ(scene.ask(request), R"(<querySubject screenTip="Hinweis"/>)");
    scene.session.setLocale("fr");
    EXPECT_EQ(scene.ask(request), "");
}

TEST_F(Tree, TakesPropertiesByTheClassAndCollectionsByTheTag) {
    // A namespace is written as a folder.
    EXPECT_EQ(scene.ask("<Metadata><Property a='namespace/@ID'/><Property a='querySubject/@name'/>"
                        "<Property a='folder/querySubject'/></Metadata>"),
              R"(<folder ID="n"><querySubject name="A]b"/><folder ID="inner"/></folder>)");
    EXPECT_EQ(scene.ask("<Metadata><Property a='folder/@ID'/></Metadata>"), "");
    EXPECT_EQ(scene.ask("<Metadata><Property a='*/@ID'/>"
                        "<Property a='namespace/querySubject'/></Metadata>"),
              R"(<folder ID="n"><folder ID="inner"/></folder>)");
}

TEST_F(Tree, WritesEverySimpleAttributeForAnAsterisk) {
    EXPECT_EQ(scene.ask(tree("start_at='[Sales].[A]]b]'", "<Property a='*/@*'/>")),
              R"(<querySubject ID="q2" name="A]b" screenTip="Tip"><queryItem ID="i3" name="C"/>)"
              R"(</querySubject>)");
}

TEST_F(Tree, TakesAnAsteriskForAllOnlyWhenItStandsAlone) {
    std::string const options = "Depth='1' start_at='[Sales].[Facts]'";
    EXPECT_EQ(scene.ask(tree(options, "<Property a='*/@*'/><Property a='./@name'/>")),
              R"(<folder name="Facts"/>)");
    EXPECT_EQ(scene.ask(tree(options, "<Property a='*/@*'/><Property a='./@*'/>")), "");
    EXPECT_EQ(scene.ask(tree(options, "<Property a='*/@*x'/>")), "");
}

TEST_F(Tree, WritesEveryCollectionForAnAsterisk) {
    EXPECT_EQ(scene.ask("<Metadata><Property a='*/@ID'/><Property a='*/*'/></Metadata>"),
              R"(<folder ID="n"><folder ID="f"><querySubject ID="q"><queryItem ID="i"/>)"
              R"(<queryItem ID="i2"/></querySubject></folder><querySubject ID="q2">)"
              R"(<queryItem ID="i3"/></querySubject><querySubject ID="q3"/><folder ID="inner">)"
              R"(<filter ID="x"/></folder></folder>)");
}

TEST_F(Tree, TakesACollectionAsteriskForANameBesideOthers) {
    EXPECT_EQ(scene.ask("<Metadata><Property a='*/@ID'/><Property a='./*'/>"
                        "<Property a='*/filter'/></Metadata>"),
              R"(<folder ID="n"><folder ID="inner"><filter ID="x"/></folder></folder>)");
}

TEST_F(Tree, WritesNoAttributeForWhatIsNoXmlName) {
    ProviderScene own(R"(<model><namespace id="n" name="N"><property name="a b">1</property>
        <property name="*">2</property><property name="1x">3</property></namespace></model>)");
    std::string const odd = "<Metadata><Property a='./@a b'/><Property a='./@1x'/>"
                            "<Property a='./@'/><Property a='*/@*'/>";
    EXPECT_EQ(own.ask(odd + "</Metadata>"), "");
    EXPECT_EQ(own.ask(odd + "<Property a='namespace/@name'/></Metadata>"), R"(<folder name="N"/>)");
    EXPECT_EQ(own.ask("<Metadata><Property a='./@*'/></Metadata>"), R"(<folder ID="n" name="N"/>)");
}

TEST_F(Tree, LeavesOutAnObjectWhoseClassIsNoXmlNameWithItsMembers) {
    for (char const* const odd : {"a b", "1x", "-"}) {
        scene.model.setClass(scene.model.byId("f"), odd);
        std::string const collections =
            std::string("<Property a='*/") + odd + "'/><Property a='*/querySubject'/></Metadata>";
        char const* const others = R"(<folder ID="n"><querySubject ID="q2"/>)"
                                   R"(<querySubject ID="q3"/><folder ID="inner"/></folder>)";
        EXPECT_EQ(scene.ask("<Metadata><Property a='*/@ID'/>" + collections), others) << odd;
        // With a path every object has an attribute; this one is left out all the same.
        EXPECT_EQ(scene.ask("<Metadata Depth='2'><Property a='*/@_path'/>" + collections),
                  R"(<folder _path="[Sales]"><querySubject _path="[Sales].[A]b]"/>)"
                  R"(<querySubject _path="[Sales].[]"/>)"
                  R"(<folder _path="[Sales].[Inner]"/></folder>)")
            << odd;
    }
}

TEST_F(Tree, IsEmptyWhenTheStartsClassIsNoXmlName) {
    scene.model.setClass(scene.model.byId("f"), "a b");
    EXPECT_EQ(scene.ask("<Metadata start_at='[Sales].[Facts]'><Property a='*/@ID'/>"
                        "<Property a='*/a b'/><Property a='*/querySubject'/></Metadata>"),
              "");
}

TEST_F(Tree, LeavesOutWhatHasNoXmlNameAsAClassWhetherItIsIncludedOrNot) {
    ProviderScene own(R"(<model><namespace id="n" name="N"><folder id="f" name="F">
        <querySubject id="q" name="Q"/></folder></namespace><securityViews>
        <securityView id="v"><set kind="included"><item>n</item><item>q</item></set></securityView>
        </securityViews></model>)",
                      "/content/m");
    own.session.setViews({"v"});
    std::string const request = "<Metadata><Property a='*/@_path'/><Property a='*/folder'/>"
                                "<Property a='*/odd class'/><Property a='*/querySubject'/>"
                                "</Metadata>";
    EXPECT_EQ(own.ask(request),
              R"(<folder _path="[N]"><querySubject _path="[N].[F].[Q]"/></folder>)");
    own.model.setClass(own.model.byId("f"), "odd class");
    EXPECT_EQ(own.ask(request), R"(<folder _path="[N]"/>)");
}

TEST_F(Tree, WritesEachOfTheObjectsGivenInTheirOrder) {
    RequestParts parts(scene, "<Metadata Depth='7'><Property a='*/@ID'/>"
                              "<Property a='*/queryItem'/></Metadata>");
    Vex_Handle_Collection objects = scene.model.byIds({"q2", "q"});
    scene.provider.GetRequestedElementTreeAtLevel(
        parts.helper, "querySubject", "", {}, 7, parts.locale, parts.result(), objects,
        parts.engine, parts.visibility, 6, false, false, false);
    EXPECT_EQ(parts.response.resultText(),
              R"(<querySubject ID="q2"><queryItem ID="i3"/></querySubject>)"
              R"(<querySubject ID="q"><queryItem ID="i"/><queryItem ID="i2"/></querySubject>)");
}

TEST_F(Tree, EndsAtTheDepthWhateverLevelItIsEnteredAt) {
    RequestParts parts(scene, tree("", "<Property a='*/@ID'/>"));
    scene.provider.AddRequestedSubtreeAtLevel(parts.helper, "querySubject", "", {}, 7, parts.locale,
                                              parts.result(), scene.model.byId("q2"), parts.engine,
                                              parts.visibility, 7, false, false, false);
    EXPECT_EQ(parts.response.resultText(), R"(<querySubject ID="q2"/>)");
}

TEST_F(Tree, RefusesToGoPastTheLastLevel) {
    RequestParts parts(scene, tree("", "<Property a='*/@ID'/>"));
    Vex_Handle_Collection objects = scene.model.byIds({"q2"});
    auto const writeAt = [&](int level) {
        scene.provider.GetRequestedElementTreeAtLevel(
            parts.helper, "querySubject", "[the path]", {}, level, parts.locale, parts.result(),
            objects, parts.engine, parts.visibility, level, false, false, false);
    };
    writeAt(1024);
    EXPECT_EQ(parts.response.resultText(), R"(<querySubject ID="q2"/>)");
    expectFailure([&] { writeAt(1025); }, 1444379514, "VexMDMaProvider", 0,
                  "VexMDMaProvider::GetRequestedElementTreeAtLevel", {"[the path]"});
}

TEST_F(Tree, WritesASingleObjectPastTheLastLevelButNotItsMembers) {
    for (int const level : {1025, std::numeric_limits<int>::max()}) {
        RequestParts parts(scene, tree("", "<Property a='*/@ID'/>"));
        auto const write = [&](char const* id) {
            scene.provider.AddRequestedSubtreeAtLevel(
                parts.helper, "querySubject", "[the path]", {}, 0, parts.locale, parts.result(),
                scene.model.byId(id), parts.engine, parts.visibility, level, false, false, false);
        };
        write("q3");
        EXPECT_EQ(parts.response.resultText(), R"(<querySubject ID="q3"/>)");
        expectFailure([&] { write("q2"); }, 1444379514, "VexMDMaProvider", 0,
                      "VexMDMaProvider::GetRequestedElementTreeAtLevel", {"[the path]"});
        EXPECT_EQ(parts.response.resultText(), R"(<querySubject ID="q3"/><querySubject ID="q2"/>)");
    }
}

TEST_F(Tree, NamesAnObjectAfterItsOwnClassWhateverItIsSaidToBe) {
    char const* const wanted = R"(<querySubject _path="[above].[A]b]" _ref="[A]b]">)"
                               R"(<queryItem _path="[above].[A]b].[C]" _ref="[A]b].[C]"/>)"
                               R"(</querySubject>)";
    for (char const* const said : {"folder", "queryItem", "namespace", "unknown", ""}) {
        RequestParts parts(scene, tree("", "<Property a='*/@_path'/><Property a='*/@_ref'/>"));
        Vex_Handle_Collection objects = scene.model.byIds({"q2"});
        scene.provider.AddRequestedSubtreeAtLevel(
            parts.helper, said, "[above]", {}, 0, parts.locale, parts.result(), objects[0],
            parts.engine, parts.visibility, 2, false, false, false);
        EXPECT_EQ(parts.response.resultText(), wanted) << said;
        scene.provider.GetRequestedElementTreeAtLevel(
            parts.helper, said, "[above]", {}, 0, parts.locale, parts.result(), objects,
            parts.engine, parts.visibility, 2, false, false, false);
        EXPECT_EQ(parts.response.resultText(), std::string(wanted) + wanted) << said;
    }
}

TEST_F(Tree, KeepsWhatIsWrittenWhenTheHostFails) {
    TestRequest request(tree("", "<Property a='*/@ID'/>"));
    TestResponse response;
    scene.model.calls().failAt(Call::ChildObjects, 2);
    expectInjectedFailure([&] { scene.provider.doRequest(request.node(), response.node()); });
    EXPECT_EQ(response.resultText(), R"(<folder ID="n"><folder ID="f"/></folder>)");
}

} // namespace
