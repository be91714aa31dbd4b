// The query item that three names stand for.

#include "VexObject.h"
#include "tests/provider/ProviderScene.h"

#include <gtest/gtest.h>

namespace {

constexpr char FindFunction[] = "VexMDMaProvider::FindReferencedItem";

constexpr char ReferencedModel[] = R"(
<model id="m" defaultLocale="en">
<namespace id="root" name="Root">
  <querySubject id="top" name="Top"><queryItem id="topItem" name="On top"/></querySubject>
  <namespace id="n"><property name="name" locale="en">Sales</property>
    <property name="name" locale="de">Vertrieb</property>
    <querySubject id="q" name="Orders">
      <queryItem id="i" name="Quantity"/>
      <queryItemFolder id="d1" name="Dates"><queryItem id="i1" name="Ordered"/>
        <queryItemFolder name="Deep"><queryItem id="i2" name="Deepest"/></queryItemFolder>
      </queryItemFolder>
      <queryItemFolder id="d2" name="More"><queryItem id="i3" name="Ordered"/>
        <queryItem id="i4" name="Extra"/></queryItemFolder>
    </querySubject>
    <querySubject id="q2" name="Bare"><queryItem id="i5" name="Only"/></querySubject>
    <shortcut id="s1" name="Link" refobj="[Sales].[Orders]"/>
    <shortcut id="s2" name="Late" refobj="[Sales].[Bare]">
      <property name="refobj">[Sales].[Orders]</property></shortcut>
    <shortcut id="s3" name="Half" refobj="[Sales].[Orders]">
      <property name="refobj">[No]</property></shortcut>
    <shortcut id="s4" name="None"/>
    <shortcut id="s5" name="Broken" refobj="[No]"/>
    <folder id="f" name="Facts"><querySubject id="q3" name="Filed">
      <queryItem id="i6" name="Sheet"/></querySubject></folder>
  </namespace>
  <namespace id="other" name="Other">
    <shortcut id="toSales" name="ToSales" refobj="[Sales]"/>
    <folder><querySubject id="q4" name="Filed"><queryItem id="i7" name="Leaf"/></querySubject>
      <querySubject id="q5" name="Last"/></folder>
  </namespace>
  <namespace id="third" name="Third"><folder>
    <querySubject id="q6"><queryItem id="i8" name="Nameless"/></querySubject></folder></namespace>
</namespace></model>)";

std::string requestAt(std::string const& reference, std::string const& property = "*/@ID") {
    return "<Metadata start_atRef='" + reference + "'><Property a='" + property + "'/></Metadata>";
}

class ReferencedItem : public testing::Test {
protected:
    std::string itemAt(std::string const& reference) { return scene.ask(requestAt(reference)); }
    void expectNotFound(std::string const& reference, int line, std::string const& name,
                        char const* file = __builtin_FILE(), int testLine = __builtin_LINE()) {
        scene.expectRefused(requestAt(reference), 1171025905, line, FindFunction, {name}, file,
                            testLine);
    }

    // The search by itself, from one candidate.
    bool find(char const* from, std::list<I18NString> const& names) {
        scene.open();
        candidates = scene.model.byIds({from});
        return scene.provider.FindReferencedItem(names, scene.session.GetCurrentLocale(),
                                                 candidates, path);
    }
    std::string onlyCandidate() const {
        I18NString id;
        EXPECT_EQ(candidates.size(), 1U);
        VexObject(candidates[0]).GetId(id);
        return id.toUtf8();
    }

    ProviderScene scene{ReferencedModel};
    Vex_Handle_Collection candidates;
    VexMDMaPath path;
};

TEST_F(ReferencedItem, StandsDirectlyInItsQuerySubject) {
    EXPECT_EQ(itemAt("[Sales].[Orders].[Quantity]"), R"(<queryItem ID="i"/>)");
    EXPECT_EQ(scene.ask(requestAt("[Sales].[Orders].[Quantity]", "*/@_ref")),
              R"(<queryItem _ref="[Sales].[Orders].[Quantity]"/>)");
}

TEST_F(ReferencedItem, StandsInAFolderOfItsQuerySubjectTheFirstThatHasIt) {
    EXPECT_EQ(itemAt("[Sales].[Orders].[Ordered]"), R"(<queryItem ID="i1"/>)");
    EXPECT_EQ(itemAt("[Sales].[Orders].[Extra]"), R"(<queryItem ID="i4"/>)");
}

TEST_F(ReferencedItem, IsNotSoughtInFoldersOfFolders) {
    expectNotFound("[Sales].[Orders].[Deepest]", 1414, "Deepest");
}

TEST_F(ReferencedItem, IsRefusedWhenNoFolderHasIt) {
    expectNotFound("[Sales].[Orders].[No]", 1414, "No");
}

TEST_F(ReferencedItem, IsRefusedInAQuerySubjectWithoutFolders) {
    expectNotFound("[Sales].[Bare].[No]", 1398, "No");
}

TEST_F(ReferencedItem, IsFoundThroughAShortcutToItsQuerySubject) {
    EXPECT_EQ(itemAt("[Sales].[Link].[Quantity]"), R"(<queryItem ID="i"/>)");
    EXPECT_EQ(scene.ask(requestAt("[Sales].[Link].[Quantity]", "*/@_ref")),
              R"(<queryItem _ref="[Sales].[Quantity]"/>)");
}

TEST_F(ReferencedItem, IsFoundThroughTheLastReferenceOfAShortcut) {
    EXPECT_EQ(itemAt("[Sales].[Late].[Quantity]"), R"(<queryItem ID="i"/>)");
    expectNotFound("[Sales].[Late].[Only]", 1414, "Only");
}

TEST_F(ReferencedItem, IsRefusedBehindAShortcutWithoutAReference) {
    expectNotFound("[Sales].[None].[Quantity]", 1398, "Quantity");
}

TEST_F(ReferencedItem, IsRefusedBehindAShortcutToNothing) {
    scene.expectRefused(requestAt("[Sales].[Half].[Quantity]"), 1170588191, 1214, FindFunction);
    scene.expectRefused(requestAt("[Sales].[Broken].[Quantity]"), 1171122674, 550,
                        "VexMDMaProvider::FindShortcutReference", {"Broken"});
}

TEST_F(ReferencedItem, IsFoundInAQuerySubjectAnywhereInItsNamespace) {
    EXPECT_EQ(itemAt("[Sales].[Filed].[Sheet]"), R"(<queryItem ID="i6"/>)");
    EXPECT_EQ(itemAt("[Other].[Filed].[Leaf]"), R"(<queryItem ID="i7"/>)");
    EXPECT_EQ(scene.ask(requestAt("[Other].[Filed].[Leaf]", "*/@_ref")),
              R"(<queryItem _ref="[Other].[Filed].[Leaf]"/>)");
}

TEST_F(ReferencedItem, IsRefusedWhenNoNamespaceOfTheNameHasTheQuerySubject) {
    expectNotFound("[Sales].[No].[Quantity]", 1357, "No");
    expectNotFound("[Sales].[Last].[x]", 1357, "Last");
    expectNotFound("[Root].[Orders].[Quantity]", 1357, "Orders");
}

TEST_F(ReferencedItem, IsFoundInTheFirstOfLikeNamedNamespaces) {
    ProviderScene own(R"(<model><namespace name="Root">
        <namespace name="Sales"/>
        <namespace name="Sales"><folder><querySubject name="Orders"><queryItem id="i1" name="Q"/>
        </querySubject></folder></namespace>
        <namespace name="Sales"><querySubject name="Orders"><queryItem id="i2" name="Q"/>
        </querySubject></namespace></namespace></model>)");
    EXPECT_EQ(own.ask(requestAt("[Sales].[Orders].[Q]")), R"(<queryItem ID="i1"/>)");
}

// covers quirk: unnamed-subject-repeats-the-name-before
TEST_F(ReferencedItem, TakesAQuerySubjectWithoutANameForLikeNamedToTheOneBefore) {
    EXPECT_EQ(itemAt("[Third].[Last].[Nameless]"), R"(<queryItem ID="i8"/>)");
}

TEST_F(ReferencedItem, AdmitsANamespaceByItsNameInTheDefaultLocale) {
    scene.session.setLocale("de");
    EXPECT_TRUE(find("n", {"Sales", "Filed", "Sheet"}));
    EXPECT_EQ(onlyCandidate(), "i6");
}

TEST_F(ReferencedItem, AdmitsANamespaceByItsNameInAnotherSupportedLocale) {
    ProviderScene own(R"(<model defaultLocale="en"><locales><locale>de</locale></locales>
        <namespace id="n"><property name="name" locale="en">Sales</property>
        <property name="name" locale="de">Vertrieb</property><folder>
        <querySubject name="Filed"><queryItem name="Sheet"/></querySubject></folder></namespace>
        </model>)");
    own.open();
    Vex_Handle_Collection from = own.model.byIds({"n"});
    EXPECT_TRUE(own.provider.FindReferencedItem({"Vertrieb", "Filed", "Sheet"},
                                                own.session.GetCurrentLocale(), from, path));
    EXPECT_EQ(pathText(path), "queryItem:Sheet querySubject:Filed namespace:Sales "
                              "querySubject:Filed folder:Filed namespace:Sales");
}

TEST_F(ReferencedItem, IsFoundInANamespaceBehindAShortcut) {
    EXPECT_TRUE(find("toSales", {"ToSales", "Orders", "Quantity"}));
    EXPECT_EQ(onlyCandidate(), "i");
}

// covers quirk: subject-is-sought-in-the-first-candidate
TEST_F(ReferencedItem, IsSoughtInTheFirstCandidateWhenTheNamespaceIsNested) {
    EXPECT_TRUE(find("root", {"Sales", "Top", "On top"}));
    EXPECT_EQ(onlyCandidate(), "topItem");
    EXPECT_EQ(pathText(path), "queryItem:On top querySubject:Top namespace:Root "
                              "querySubject:Top namespace:Root");
}

TEST_F(ReferencedItem, IsStillFoundModelWideWhenTheNamespaceIsNested) {
    EXPECT_TRUE(find("root", {"Sales", "Orders", "Quantity"}));
    EXPECT_EQ(onlyCandidate(), "i");
}

TEST_F(ReferencedItem, IsNotSoughtForAnUnknownFirstName) {
    EXPECT_FALSE(find("n", {"No", "Orders", "Quantity"}));
    EXPECT_EQ(onlyCandidate(), "n");
    EXPECT_EQ(pathText(path), "");
}

TEST_F(ReferencedItem, HasAnEmptyNameForEachNameThatIsMissing) {
    expectFailure([&] { find("n", {"Sales"}); }, 1171025905, "VexMDMaProvider", 1357, FindFunction,
                  {""});
    expectFailure(
        [&] {
            find("n", {"Sales", "Bare"});
        },
        1171025905, "VexMDMaProvider", 1398, FindFunction, {""});
    EXPECT_TRUE(find("n", {"Sales", "Bare", "Only", "more"}));
}

TEST_F(ReferencedItem, KeepsTheRecordsOfTheStepsBeforeAFailure) {
    expectFailure(
        [&] {
            find("n", {"Sales", "Bare", "No"});
        },
        1171025905, "VexMDMaProvider", 1398, FindFunction, {"No"});
    EXPECT_EQ(pathText(path), "querySubject:Bare namespace:Sales namespace:Sales namespace:Root");
    EXPECT_EQ(onlyCandidate(), "n");
}

// A model without query subjects: shortcuts are sought in their place.
std::string modelOfShortcuts(std::string const& shortcuts) {
    return R"(<model><namespace name="Root"><namespace name="Sales"><folder>
        <filter name="Orders"><queryItem id="i" name="Quantity"/></filter>)" +
           shortcuts + "</folder></namespace></namespace></model>";
}

TEST(ReferencedItemWithoutQuerySubjects, IsFoundInALikeNamedTargetOfAShortcut) {
    ProviderScene scene(modelOfShortcuts(
        R"(<shortcut name="Other" refobj="[No]"/><shortcut name="Orders" refobj="[Sales].[Orders]"/>)"));
    EXPECT_EQ(scene.ask(requestAt("[Sales].[Orders].[Quantity]")), R"(<queryItem ID="i"/>)");
    EXPECT_EQ(scene.ask(requestAt("[Sales].[Orders].[Quantity]", "*/@_ref")),
              R"(<queryItem _ref="[Sales].[Orders].[Quantity]"/>)");
    scene.expectRefused(requestAt("[Root].[Orders].[Quantity]"), 1171025905, 1357, FindFunction,
                        {"Orders"});
}

TEST(ReferencedItemWithoutQuerySubjects, IsRefusedForATargetOfAnotherName) {
    ProviderScene scene(modelOfShortcuts(R"(<shortcut name="Link" refobj="[Sales].[Orders]"/>)"));
    scene.expectRefused(requestAt("[Sales].[Link].[Quantity]"), 1171025905, 1357, FindFunction,
                        {"Link"});
}

TEST(ReferencedItemWithoutQuerySubjects, IsSoughtBehindTheFirstShortcutOfTheNameAlone) {
    ProviderScene scene(modelOfShortcuts(R"(<shortcut name="Orders" refobj="[Sales]"/>
        <shortcut name="Orders" refobj="[Sales].[Orders]"/>)"));
    scene.expectRefused(requestAt("[Sales].[Orders].[Quantity]"), 1171025905, 1357, FindFunction,
                        {"Orders"});
}

TEST(ReferencedItemWithoutQuerySubjects, IsRefusedWithoutAShortcutOfTheName) {
    ProviderScene scene(modelOfShortcuts(R"(<shortcut name="Link" refobj="[Sales]"/>)"));
    scene.expectRefused(requestAt("[Sales].[Orders].[Quantity]"), 1171025905, 1263, FindFunction,
                        {"Orders"});
    ProviderScene bare("<model><namespace name='Sales'/></model>");
    bare.expectRefused(requestAt("[Sales].[Orders].[Quantity]"), 1171025905, 1263, FindFunction,
                       {"Orders"});
}

TEST(ReferencedItemWithoutQuerySubjects, IsRefusedBehindAShortcutToNothing) {
    ProviderScene dangling(modelOfShortcuts(R"(<shortcut name="Orders" refobj="[No]"/>)"));
    dangling.expectRefused(requestAt("[Sales].[Orders].[Quantity]"), 1171122674, 550,
                           "VexMDMaProvider::FindShortcutReference", {"Orders"});
    ProviderScene silent(modelOfShortcuts(R"(<shortcut name="Orders"/>)"));
    silent.expectRefused(requestAt("[Sales].[Orders].[Quantity]"), 1171025905, 1357, FindFunction,
                         {"Orders"});
}

} // namespace
