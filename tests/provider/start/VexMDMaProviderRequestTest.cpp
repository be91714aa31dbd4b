// From a start path to the object that it names.

#include "tests/provider/ProviderScene.h"
#include "tests/support/Casts.h"

#include <gtest/gtest.h>

namespace {

constexpr char RootFunction[] = "VexMDMAProvider::ProcessRequest";
constexpr char NamesFunction[] = "VexMDMaProviderR::ProcessRequest";

constexpr char RequestModel[] = R"(
<model id="m" defaultLocale="en">
  <namespace id="root" name="Root">
    <namespace id="n" name="Sales">
      <folder id="f" name="Facts">
        <querySubject id="q" name="Orders"><queryItem id="i" name="Quantity"/></querySubject>
      </folder>
      <querySubject id="q2" name="Staff"><queryItem id="i2" name="Salary"/></querySubject>
      <folder id="both1" name="Both"/>
      <querySubject id="both2" name="Both"/>
      <querySubject id="first" name="Twice"/><querySubject id="second" name="Twice"/>
      <shortcut id="s" name="Link" refobj="[Archive].[Old]"/>
      <shortcut id="s2" name="Away" refobj="[Archive]"/>
      <shortcut id="s3" name="Broken" refobj="[No]"/>
      <shortcut id="s4" name="Loose"/>
    </namespace>
    <namespace id="n2" name="Archive">
      <querySubject id="q3" name="Old"><queryItem id="i3" name="Year"/></querySubject>
    </namespace>
    <namespace id="n3"><property name="name" locale="de">Vertrieb</property>
      <property name="name" locale="en">Distribution</property></namespace>
    <namespace id="n4" name="Sales"/>
  </namespace>
  <securityViews><securityView id="v">
    <set kind="included"><item>n</item><item>q3</item></set>
  </securityView></securityViews>
</model>)";

// Asks for ids; the walk may use all the collections named.
std::string idAt(std::string const& path, std::string const& more = "") {
    return "<Metadata Depth='1' start_at='" + path +
           "'><Property a='*/@ID'/><Property a='*/folder'/><Property a='*/querySubject'/>"
           "<Property a='*/queryItem'/>" +
           more + "</Metadata>";
}

class StartPathWalk : public testing::Test {
protected:
    ProviderScene scene{RequestModel};
};

TEST_F(StartPathWalk, StartsAtTheFirstNamespaceWithoutAPath) {
    EXPECT_EQ(scene.ask(idAt("")), R"(<folder ID="root"/>)");
}

TEST_F(StartPathWalk, EndsAtTheNamespaceThatASingleNameNames) {
    EXPECT_EQ(scene.ask(idAt("[Archive]")), R"(<folder ID="n2"/>)");
}

TEST_F(StartPathWalk, TakesTheFirstNamespaceOfAName) {
    EXPECT_EQ(scene.ask(idAt("[Sales]")), R"(<folder ID="n"/>)");
}

TEST_F(StartPathWalk, FindsANameOnEachLevel) {
    EXPECT_EQ(scene.ask(idAt("[Sales].[Facts].[Orders].[Quantity]")), R"(<queryItem ID="i"/>)");
    EXPECT_EQ(scene.ask(idAt("[Root].[Sales].[Staff]")), R"(<querySubject ID="q2"/>)");
}

TEST_F(StartPathWalk, ReadsTheRootNamespacesNameInTheRequestsLocale) {
    ProviderScene own(casts::bilingualShop);
    own.session.setLocale("de");
    EXPECT_EQ(own.ask("<Metadata><Property a='./@_path'/></Metadata>"),
              R"(<folder _path="[Vertrieb]"/>)");
}

TEST_F(StartPathWalk, StartsAtARootNamespaceWithoutAName) {
    ProviderScene own(R"(<model><namespace id="n"/></model>)");
    EXPECT_EQ(own.ask(idAt("")), R"(<folder ID="n"/>)");
}

TEST_F(StartPathWalk, RefusesAModelWithoutNamespaces) {
    ProviderScene own("<model><folder name='Sales'/></model>");
    own.expectRefused(idAt(""), 1170809568, 589, RootFunction);
    own.expectRefused(idAt("[Sales]"), 1170809568, 589, RootFunction);
}

// covers quirk: root-name-bracket-not-doubled
TEST_F(StartPathWalk, RefusesARootNameWhoseBracketDoesNotSplit) {
    ProviderScene inside("<model><namespace name='A]b'/></model>");
    inside.expectRefused(idAt(""), 1170869272, 615, RootFunction);
    ProviderScene atEnd("<model><namespace name='a]'/></model>");
    atEnd.expectRefused(idAt(""), 1170869272, 615, RootFunction);
}

TEST_F(StartPathWalk, DoesNotFindARootNameWhoseBracketsSplitOtherwise) {
    ProviderScene own("<model><namespace name='a]]b'/></model>");
    own.expectRefused(idAt(""), 1171025905, 808, NamesFunction, {"a]b"});
}

TEST_F(StartPathWalk, RefusesAFirstNameThatNoNamespaceHas) {
    scene.expectRefused(idAt("[No].[Staff]"), 1171025905, 808, NamesFunction, {"No"});
    scene.expectRefused(idAt("[sales]"), 1171025905, 808, NamesFunction, {"sales"});
    scene.expectRefused(idAt("[Facts]"), 1171025905, 808, NamesFunction, {"Facts"});
    scene.expectRefused(idAt("[]"), 1171025905, 808, NamesFunction, {""});
}

TEST_F(StartPathWalk, RefusesAFirstNameOfAnotherLocale) {
    EXPECT_EQ(scene.ask(idAt("[Distribution]")), R"(<folder ID="n3"/>)");
    scene.expectRefused(idAt("[Vertrieb]"), 1171025905, 808, NamesFunction, {"Vertrieb"});
}

TEST_F(StartPathWalk, RefusesALastNameThatNothingHas) {
    scene.expectRefused(idAt("[Sales].[No]"), 1171025905, 780, NamesFunction, {"No"});
    scene.expectRefused(idAt("[Sales].[Facts].[staff]"), 1171025905, 780, NamesFunction, {"staff"});
}

TEST_F(StartPathWalk, PassesOverANameInTheMiddleThatNothingHas) {
    EXPECT_EQ(scene.ask(idAt("[Sales].[No].[Nor].[Staff]")), R"(<querySubject ID="q2"/>)");
    EXPECT_EQ(scene.ask(idAt("[Sales].[Facts].[No].[Orders]")), R"(<querySubject ID="q"/>)");
}

TEST_F(StartPathWalk, SearchesRequestedCollectionsOnly) {
    scene.expectRefused("<Metadata start_at='[Sales].[Staff]'><Property a='*/folder'/></Metadata>",
                        1171025905, 780, NamesFunction, {"Staff"});
}

TEST_F(StartPathWalk, SearchesShortcutsAndNamespacesUnasked) {
    EXPECT_EQ(scene.ask("<Metadata Depth='1' start_at='[Root].[Archive]'>"
                        "<Property a='*/@ID'/></Metadata>"),
              R"(<folder ID="n2"/>)");
}

TEST_F(StartPathWalk, SearchesCollectionsInTheOrderRequested) {
    std::string const ids = "<Property a='*/@ID'/></Metadata>";
    EXPECT_EQ(scene.ask("<Metadata start_at='[Sales].[Both]'><Property a='*/folder'/>"
                        "<Property a='*/querySubject'/>" +
                        ids),
              R"(<folder ID="both1"/>)");
    EXPECT_EQ(scene.ask("<Metadata start_at='[Sales].[Both]'><Property a='*/querySubject'/>"
                        "<Property a='*/folder'/>" +
                        ids),
              R"(<querySubject ID="both2"/>)");
}

TEST_F(StartPathWalk, TakesTheFirstOfTwoLikeNamedMembers) {
    EXPECT_EQ(scene.ask(idAt("[Sales].[Twice]")), R"(<querySubject ID="first"/>)");
}

TEST_F(StartPathWalk, SearchesTheStartNamespacesCollectionsOnEachLevel) {
    std::string const start = "<Metadata start_at='[Sales].[Staff].[Salary]'>"
                              "<Property a='*/@ID'/><Property a='namespace/querySubject'/>";
    EXPECT_EQ(scene.ask(start + "<Property a='namespace/queryItem'/></Metadata>"),
              R"(<queryItem ID="i2"/>)");
    scene.expectRefused(start + "<Property a='querySubject/queryItem'/></Metadata>", 1171025905,
                        780, NamesFunction, {"Salary"});
}

TEST_F(StartPathWalk, SearchesEveryCollectionOfTheStartNamespaceForAnAsterisk) {
    std::string const rest = "<Property a='*/@ID'/><Property a='./*'/></Metadata>";
    EXPECT_EQ(scene.ask("<Metadata Depth='1' start_at='[Sales].[Facts].[Orders]'>" + rest),
              R"(<querySubject ID="q"/>)");
    // "queryItem" is no collection of the start namespace.
    scene.expectRefused("<Metadata start_at='[Sales].[Staff].[Salary]'>" + rest, 1171025905, 780,
                        NamesFunction, {"Salary"});
}

TEST_F(StartPathWalk, SearchesNothingForAnAsteriskInANamespaceWithoutMembers) {
    EXPECT_EQ(scene.ask("<Metadata start_at='[Distribution].[No].[Nor]'><Property a='*/@ID'/>"
                        "<Property a='./@_path'/><Property a='./*'/></Metadata>"),
              R"(<folder ID="n3" _path="[Distribution].[No].[Nor]"/>)");
}

TEST_F(StartPathWalk, TakesAnAsteriskBesideAnotherNameForAName) {
    scene.expectRefused("<Metadata start_at='[Sales].[Facts].[Orders]'><Property a='./*'/>"
                        "<Property a='*/querySubject'/></Metadata>",
                        1171025905, 780, NamesFunction, {"Orders"});
}

TEST_F(StartPathWalk, FollowsAShortcutInTheMiddle) {
    EXPECT_EQ(scene.ask(idAt("[Sales].[Link].[Year]")), R"(<queryItem ID="i3"/>)");
    EXPECT_EQ(scene.ask(idAt("[Sales].[Away].[Old].[Year]")), R"(<queryItem ID="i3"/>)");
}

TEST_F(StartPathWalk, KeepsAShortcutAtTheEnd) {
    EXPECT_EQ(scene.ask("<Metadata start_at='[Sales].[Link]'><Property a='*/@name'/>"
                        "<Property a='*/@ID'/></Metadata>"),
              R"(<querySubject ID="q3" name="Link"/>)");
}

TEST_F(StartPathWalk, RefusesAShortcutToNothing) {
    for (char const* const path : {"[Sales].[Broken].[Year]", "[Sales].[Broken]"}) {
        scene.expectRefused(idAt(path), 1171122674, 550, "VexMDMaProvider::FindShortcutReference",
                            {"Broken"});
    }
}

TEST_F(StartPathWalk, FindsNothingBehindAShortcutWithoutATarget) {
    scene.expectRefused(idAt("[Sales].[Loose].[Year]"), 1171025905, 780, NamesFunction, {"Year"});
}

TEST_F(StartPathWalk, ShowsMembersBehindAShortcutWhateverTheViewsInclude) {
    ProviderScene content(RequestModel, "/content/m");
    content.session.setViews({"v"});
    std::string const rest = "'><Property a='*/@ID'/><Property a='*/querySubject'/>"
                             "<Property a='*/queryItem'/></Metadata>";
    EXPECT_EQ(content.ask("<Metadata start_at='[Archive].[Old]" + rest),
              R"(<querySubject ID="q3"/>)");
    EXPECT_EQ(content.ask("<Metadata start_at='[Sales].[Away].[Old]" + rest),
              R"(<querySubject ID="q3"><queryItem ID="i3"/></querySubject>)");
    EXPECT_EQ(content.ask("<Metadata start_at='[Sales].[Away].[Old].[Year]" + rest),
              R"(<queryItem ID="i3"/>)");
}

TEST_F(StartPathWalk, HandsItsPathToTheReferenceOfTheStartObject) {
    auto const reference = [&](char const* path) {
        return scene.ask(std::string("<Metadata Depth='1' start_at='") + path +
                         "'><Property a='./@_ref'/><Property a='*/folder'/>"
                         "<Property a='*/querySubject'/><Property a='*/queryItem'/></Metadata>");
    };
    EXPECT_EQ(reference("[Sales].[Facts].[Orders].[Quantity]"),
              R"(<queryItem _ref="[Sales].[Orders].[Quantity]"/>)");
    EXPECT_EQ(reference("[Root].[Sales].[Staff]"), R"(<querySubject _ref="[Sales].[Staff]"/>)");
    EXPECT_EQ(reference("[Sales]"), R"(<folder _ref="[Sales]"/>)");
    // A shortcut to a namespace stands for a namespace of its own name.
    EXPECT_EQ(reference("[Sales].[Away].[Old].[Year]"),
              R"(<queryItem _ref="[Away].[Old].[Year]"/>)");
}

TEST_F(StartPathWalk, ResolvesTheFirstNameOfAReferenceBeforeItsOwnSearch) {
    scene.expectRefused("<Metadata start_atRef='[No].[Staff].[Salary]'/>", 1171025905, 808,
                        NamesFunction, {"No"});
    EXPECT_EQ(scene.ask("<Metadata start_atRef='[Sales].[Staff].[Salary]'>"
                        "<Property a='./@ID'/></Metadata>"),
              R"(<queryItem ID="i2"/>)");
}

TEST_F(StartPathWalk, LetsAFailureOfTheHostPass) {
    scene.model.calls().failAt(Call::GetElementsByTagName, 1);
    expectInjectedFailure([&] { scene.ask(idAt("")); });
    EXPECT_EQ(scene.ask(idAt("")), R"(<folder ID="root"/>)");
}

} // namespace
