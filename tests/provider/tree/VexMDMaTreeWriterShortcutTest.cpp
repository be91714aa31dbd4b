// Shortcuts as elements of what they stand for.

#include "tests/provider/ProviderScene.h"

#include <gtest/gtest.h>

namespace {

// The shortcuts stand in a namespace of their own.
std::string modelWith(std::string const& shortcuts) {
    return R"(<model id="m" defaultLocale="en"><namespace id="root" name="Root">
      <namespace id="n" name="Sales" usage="space">
        <querySubject id="q" name="Orders" screenTip="Its tip" description="Its text" usage="fact">
          <property name="a b">between</property>
          <queryItem id="i" name="Quantity"/><shortcut id="member" name="Inside"
           refobj="[Sales].[Open]"/></querySubject>
        <filter id="x" name="Open" usage="narrow"/>
      </namespace>
      <namespace id="links" name="Links">)" +
           shortcuts + "</namespace></namespace></model>";
}

constexpr char Again[] = R"(<shortcut id="s" name="Again" refobj="[Sales].[Orders]" usage="own"/>)";
constexpr char Collections[] = "<Property a='*/querySubject'/><Property a='*/queryItem'/>"
                               "<Property a='*/filter'/></Metadata>";

// The members of "Links", or what else the options start at.
std::string askWith(std::string const& shortcuts, std::string const& properties,
                    std::string const& options = "start_at='[Links]'") {
    ProviderScene scene(modelWith(shortcuts));
    return scene.ask("<Metadata " + options + ">" + properties + Collections);
}

// The shortcuts of "Links" alone.
std::string elements(std::string const& shortcuts, std::string const& properties) {
    std::string const text = askWith(shortcuts, "<Property a='namespace/@ID'/>" + properties,
                                     "Depth='2' start_at='[Links]'");
    std::string const before = R"(<folder ID="links">)";
    std::string const after = "</folder>";
    if (!text.starts_with(before) || !text.ends_with(after)) {
        return text;
    }
    return text.substr(before.size(), text.size() - before.size() - after.size());
}

TEST(WrittenShortcut, IsAnElementOfItsTargetsClassUnderItsOwnName) {
    EXPECT_EQ(elements(Again, "<Property a='*/@name'/>"),
              R"(<folder ID="links" name="Links"><querySubject name="Again"/></folder>)");
    EXPECT_EQ(elements(Again, "<Property a='querySubject/@name'/>"),
              R"(<querySubject name="Again"/>)");
}

TEST(WrittenShortcut, HasTheMembersOfItsTarget) {
    EXPECT_EQ(askWith(Again, "<Property a='*/@name'/>"),
              R"(<folder name="Links"><querySubject name="Again"><queryItem name="Quantity"/>)"
              R"(<filter name="Inside"/></querySubject></folder>)");
}

TEST(WrittenShortcut, ToANamespaceTakesCollectionsByTheClassAndPropertiesByTheTag) {
    EXPECT_EQ(elements(R"(<shortcut name="Space" refobj="[Sales]"/>)",
                       "<Property a='folder/@name'/><Property a='namespace/@usage'/>"),
              R"(<folder name="Space"/>)");
    ProviderScene scene(modelWith(R"(<shortcut name="Space" refobj="[Sales]"/>)"));
    EXPECT_EQ(scene.ask("<Metadata start_at='[Links].[Space]'><Property a='*/@name'/>"
                        "<Property a='namespace/filter'/><Property a='folder/querySubject'/>"
                        "</Metadata>"),
              R"(<folder name="Space"><filter name="Open"/></folder>)");
}

TEST(WrittenShortcut, HasItsOwnNameAtTheEndOfItsPath) {
    EXPECT_EQ(askWith(Again, "<Property a='*/@_path'/>"),
              R"(<folder _path="[Links]"><querySubject _path="[Links].[Again]">)"
              R"(<queryItem _path="[Links].[Again].[Quantity]"/>)"
              R"(<filter _path="[Links].[Again]"/></querySubject></folder>)");
}

TEST(WrittenShortcut, ExtendsThePathOfItsMembersUnasked) {
    EXPECT_EQ(
        askWith(Again, "<Property a='namespace/@ID'/><Property a='queryItem/@_path'/>"),
        R"(<folder ID="links"><querySubject>)"
        R"(<queryItem _path="[Links].[Again].[Quantity]"/><filter/></querySubject></folder>)");
}

TEST(WrittenShortcut, AsStartObjectHasTheStartPath) {
    EXPECT_EQ(askWith(Again, "<Property a='*/@_path'/>", "Depth='1' start_at='[Links] .[Again]'"),
              R"(<querySubject _path="[Links] .[Again]"/>)");
}

TEST(WrittenShortcut, HasAReferenceThatEndsAtItsNamespace) {
    EXPECT_EQ(askWith(Again, "<Property a='*/@_ref'/>"),
              R"(<folder _ref="[Links]"><querySubject _ref="[Links]">)"
              R"(<queryItem _ref="[Links].[Quantity]"/><filter _ref="[Links]"/></querySubject>)"
              R"(</folder>)");
}

TEST(WrittenShortcut, ToANamespaceHasItsOwnNameAsReference) {
    EXPECT_EQ(askWith(R"(<shortcut name="Space" refobj="[Sales]"/>)", "<Property a='*/@_ref'/>"),
              R"(<folder _ref="[Links]"><folder _ref="[Space]">)"
              R"(<querySubject _ref="[Space].[Orders]">)"
              R"(<queryItem _ref="[Space].[Orders].[Quantity]"/><filter _ref="[Sales]"/>)"
              R"(</querySubject><filter _ref="[Space].[Open]"/></folder></folder>)");
}

TEST(WrittenShortcut, OutsideTheRootNamespaceAddsNothingToAReference) {
    ProviderScene scene(R"(<model><namespace name="Sales"/><namespace name="Links">
        <shortcut name="Space" refobj="[Sales]"/></namespace></model>)");
    EXPECT_EQ(scene.ask("<Metadata start_at='[Links]'><Property a='*/@_ref'/></Metadata>"),
              R"(<folder _ref="[Links]"><folder _ref="[Links]"/></folder>)");
}

TEST(WrittenShortcut, IsLeftOutWhenItsTargetsClassIsNoXmlName) {
    ProviderScene scene(R"(<model><namespace name="Sales"><odd id="o" name="Odd"/>
        <shortcut name="Link" refobj="[Sales].[Odd]"/></namespace></model>)");
    std::string const request = "<Metadata><Property a='*/@name'/></Metadata>";
    EXPECT_EQ(scene.ask(request), R"(<folder name="Sales"><odd name="Link"/></folder>)");
    scene.model.setClass(scene.model.byId("o"), "odd class");
    EXPECT_EQ(scene.ask(request), R"(<folder name="Sales"/>)");
    EXPECT_EQ(scene.ask("<Metadata start_at='[Sales].[Link]'><Property a='*/@name'/></Metadata>"),
              "");
}

TEST(WrittenShortcut, GivesItsOwnScreenTextsBeforeItsTargets) {
    std::string const texts = "<Property a='querySubject/@screenTip'/>"
                              "<Property a='querySubject/@description'/>";
    EXPECT_EQ(elements(Again, texts),
              R"(<querySubject description="Its text" screenTip="Its tip"/>)");
    EXPECT_EQ(elements(R"(<shortcut name="Again" refobj="[Sales].[Orders]" screenTip="Own tip"
                          description="Own text"/>)",
                       texts),
              R"(<querySubject description="Own text" screenTip="Own tip"/>)");
    EXPECT_EQ(elements(R"(<shortcut name="Again" refobj="[Sales].[Orders]" screenTip=""/>)", texts),
              R"(<querySubject description="Its text" screenTip="Its tip"/>)");
}

TEST(WrittenShortcut, GivesOtherPropertiesOfItsTarget) {
    EXPECT_EQ(
        elements(Again, "<Property a='querySubject/@usage'/><Property a='querySubject/@ID'/>"),
        R"(<querySubject ID="q" usage="fact"/>)");
}

// covers quirk: shortcut-values-pass-from-property-to-property
TEST(WrittenShortcut, RepeatsTheValueBeforeForWhatNeitherHas) {
    EXPECT_EQ(elements(Again, "<Property a='querySubject/@none'/><Property a='querySubject/@name'/>"
                              "<Property a='querySubject/@no1'/><Property a='querySubject/@usage'/>"
                              "<Property a='querySubject/@no2'/>"),
              R"(<querySubject name="Again" no1="Again" no2="fact" none="" usage="fact"/>)");
    EXPECT_EQ(elements(R"(<shortcut name="Open" refobj="[Sales].[Open]"/>)",
                       "<Property a='filter/@usage'/><Property a='filter/@screenTip'/>"
                       "<Property a='filter/@description'/>"),
              R"(<filter description="narrow" screenTip="narrow" usage="narrow"/>)");
    EXPECT_EQ(elements(Again,
                       "<Property a='querySubject/@_path'/><Property a='querySubject/@no1'/>"
                       "<Property a='querySubject/@_ref'/><Property a='querySubject/@no2'/>"),
              R"(<querySubject _path="[Links].[Again]" _ref="[Links]" no1="[Links].[Again]" )"
              R"(no2="[Links]"/>)");
}

TEST(WrittenShortcut, LetsAValuePassThroughANameThatIsNoXmlName) {
    EXPECT_EQ(elements(Again,
                       "<Property a='querySubject/@usage'/>"
                       "<Property a='querySubject/@a b'/><Property a='querySubject/@none'/>"),
              R"(<querySubject none="between" usage="fact"/>)");
    EXPECT_EQ(elements(Again, "<Property a='querySubject/@usage'/>"
                              "<Property a='querySubject/@'/><Property a='querySubject/@none'/>"),
              R"(<querySubject none="fact" usage="fact"/>)");
}

TEST(WrittenShortcut, GivesEveryAttributeOfItsTargetForAnAsterisk) {
    EXPECT_EQ(elements(Again, "<Property a='querySubject/@*'/>"),
              R"(<querySubject ID="q" description="Its text" name="Again" screenTip="Its tip" )"
              R"(usage="fact"/>)");
}

TEST(WrittenShortcut, ExpandsNoAsteriskForCollections) {
    ProviderScene scene(modelWith(Again));
    EXPECT_EQ(scene.ask("<Metadata start_at='[Links]'><Property a='*/@name'/>"
                        "<Property a='*/*'/></Metadata>"),
              R"(<folder name="Links"><querySubject name="Again"><filter name="Inside"/>)"
              R"(</querySubject></folder>)");
}

TEST(WrittenShortcut, IsNotHeldBackByViews) {
    ProviderScene scene(R"(<model><namespace id="n" name="Sales">
        <querySubject id="q" name="Orders"><queryItem id="i" name="Quantity"/></querySubject>
        <folder id="f" name="Links"><shortcut id="s" name="Again" refobj="[Sales].[Orders]"/>
        </folder></namespace><securityViews><securityView id="v"><set kind="included"/>
        </securityView></securityViews></model>)",
                        "/content/m");
    scene.session.setViews({"v"});
    EXPECT_EQ(scene.ask("<Metadata><Property a='*/@name'/><Property a='*/querySubject'/>"
                        "<Property a='*/queryItem'/><Property a='*/folder'/></Metadata>"),
              R"(<folder name="Sales"><querySubject name="Again"><queryItem name="Quantity"/>)"
              R"(</querySubject></folder>)");
}

TEST(WrittenShortcut, LeavesItsMembersToTheUsersRoles) {
    ProviderScene scene(R"(<model><namespace id="n" name="Sales">
        <querySubject id="q" name="Orders"><queryItem id="i" name="Quantity"/>
        <queryItem id="j" name="Price"/></querySubject>
        <shortcut id="s" name="Again" refobj="[Sales].[Orders]"/></namespace><securityViews>
        <securityView id="v" roleBased="true"><member roleId="clerk"/><set kind="included">
        <item>j</item></set></securityView></securityViews></model>)",
                        "/content/m");
    scene.session.setViews({"v"});
    scene.session.setRoles({"clerk"});
    EXPECT_EQ(scene.ask("<Metadata start_at='[Sales].[Again]'><Property a='*/@name'/>"
                        "<Property a='*/queryItem'/></Metadata>"),
              R"(<querySubject name="Again"><queryItem name="Price"/></querySubject>)");
}

TEST(WrittenShortcut, IsWrittenWithoutAttributesToo) {
    EXPECT_EQ(elements(Again, ""), R"(<querySubject/>)");
}

TEST(WrittenShortcut, IsLeftOutWithoutANameOrATarget) {
    for (char const* const shortcut :
         {R"(<shortcut refobj="[Sales].[Orders]"/>)", R"(<shortcut name="" refobj="[Sales]"/>)",
          R"(<shortcut name="A"/>)", R"(<shortcut name="A" refobj=""/>)"}) {
        EXPECT_EQ(askWith(shortcut, "<Property a='*/@name'/>"), R"(<folder name="Links"/>)")
            << shortcut;
    }
    EXPECT_EQ(
        askWith(R"(<shortcut name="A"/>)", "<Property a='*/@name'/>", "start_at='[Links].[A]'"),
        "");
}

TEST(WrittenShortcut, StandsForTheLastOfTwoReferences) {
    EXPECT_EQ(elements(R"(<shortcut name="Two" refobj="[Sales].[Orders]">
                          <property name="refobj">[Sales].[Open]</property></shortcut>)",
                       "<Property a='filter/@usage'/>"),
              R"(<filter usage="narrow"/>)");
}

// covers quirk: failure-names-not-uniform
TEST(WrittenShortcut, IsRefusedWhenNothingAnswersToItsReference) {
    ProviderScene scene(modelWith(std::string(Again) + R"(<shortcut name="A" refobj="[No]"/>)"));
    TestRequest request("<Metadata start_at='[Links]'><Property a='*/@name'/></Metadata>");
    TestResponse response;
    expectFailure([&] { scene.provider.doRequest(request.node(), response.node()); }, 1170588191,
                  "VexMDMaProvider", 2080, "VexMDMaProvider::processShortCutCollection");
    EXPECT_EQ(response.resultText(),
              R"(<folder name="Links"><querySubject name="Again"><filter name="Inside"/>)"
              R"(</querySubject></folder>)");
}

TEST(WrittenShortcut, IsRefusedToNothingEvenWithoutAName) {
    ProviderScene scene(modelWith(R"(<shortcut refobj="[No]"/>)"));
    scene.expectRefused("<Metadata start_at='[Links]'><Property a='*/@name'/></Metadata>",
                        1170588191, 2080, "VexMDMaProvider::processShortCutCollection");
}

TEST(WrittenShortcut, IsRefusedForALikeNamedOneToNothingThatStandsBeforeIt) {
    // Its reference is built whether it is asked for or not.
    ProviderScene scene(R"(<model><namespace id="root" name="Root">
        <folder name="Unasked"><shortcut name="Twin" refobj="[No]"/></folder>
        <shortcut name="Twin" refobj="[Root]"/></namespace></model>)");
    scene.expectRefused("<Metadata><Property a='*/@name'/></Metadata>", 1171122674, 550,
                        "VexMDMaProvider::FindShortcutReference", {"Twin"});
}

} // namespace
