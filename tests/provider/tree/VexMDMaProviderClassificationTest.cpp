// Which elements of a path count for a reference.

#include "VexObject.h"
#include "tests/provider/ProviderScene.h"

#include <gtest/gtest.h>

namespace {

constexpr char ClassifiedModel[] = R"(
<model id="m" defaultLocale="en"><namespace id="root" name="Root">
  <folder id="top" name="Top"/>
  <namespace id="lost" name="Lost">
    <shortcut id="l1" name="ToItem" refobj="[Sales].[Orders].[Quantity]"/>
    <shortcut id="l2" refobj="[Sales].[Orders]"/>
    <shortcut id="l3" name="Twin" refobj="[Sales].[Orders]"/>
    <shortcut id="l4" name="ToSpace" refobj="[Sales]"/>
    <shortcut id="l5" name="ToSubject" refobj="[Sales].[Orders]"/>
  </namespace>
  <namespace id="n" name="Sales">
    <folder id="f" name="Facts"><querySubject id="q" name="Orders">
      <queryItem id="i" name="Quantity"/></querySubject></folder>
    <filter id="x" name="Open"/><calculation id="c" name="Margin"/>
    <shortcut id="s1" name="Twin" refobj="[Sales].[Open]"/>
    <shortcut id="s2" name="ToFilter" refobj="[Sales].[Open]"/>
    <shortcut id="s3" name="ToCalculation" refobj="[Sales].[Margin]"/>
    <shortcut id="s4" name="None"/>
    <shortcut id="s5" name="Broken" refobj="[No]"/>
  </namespace>
  <namespace id="unnamed"><shortcut id="u1" name="InUnnamed" refobj="[Sales].[Open]"/></namespace>
</namespace></model>)";

class Classification : public testing::Test {
protected:
    Classification() { scene.open(); }

    I18NLocale const* locale() { return scene.session.GetCurrentLocale(); }

    std::string reference(VexMDMaPath path, char const* before = "") {
        I18NString text(before);
        scene.provider.GetReferenceForElement(locale(), path, text);
        return text.toUtf8();
    }
    // The namespace that a shortcut of that name stands for.
    std::string boundary(char const* shortcut) {
        I18NString name("untouched");
        bool const found =
            scene.provider.IsNamespaceOrShortcutToNamespace(locale(), "shortcut", shortcut, name);
        return (found ? "" : "no, ") + name.toUtf8();
    }
    bool counts(char const* className, char const* name) {
        return scene.provider.IsShortcutToQSFilterCalculation(locale(), className, name);
    }
    std::string parentNamespace(char const* id) {
        VEX_HANDLE element = scene.model.byId(id);
        scene.provider.FindParentNamespace(nullptr, element);
        I18NString found("none");
        if (element.IsNotNull()) {
            VexObject(element).GetId(found);
        }
        return found.toUtf8();
    }
    // Shortcuts below lie in no namespace from now on.
    void loseNamespace() { scene.model.invalidate(scene.model.byId("lost")); }

    ProviderScene scene{ClassifiedModel};
};

TEST_F(Classification, ReadsAReferenceFromTheNamespaceToTheObject) {
    EXPECT_EQ(reference({{"Quantity", "queryItem"},
                         {"F", "folder"},
                         {"Orders", "querySubject"},
                         {"Sales", "namespace"},
                         {"Model", "namespace"}}),
              "[Sales].[Orders].[Quantity]");
    EXPECT_EQ(reference({{"Open", "filter"}, {"Sales", "namespace"}}), "[Sales].[Open]");
    EXPECT_EQ(reference({{"Margin", "calculation"}, {"Sales", "namespace"}}), "[Sales].[Margin]");
}

TEST_F(Classification, AddsNothingForAnEmptyPath) {
    EXPECT_EQ(reference({}), "");
    EXPECT_EQ(reference({}, "x"), "x");
}

TEST_F(Classification, NamesWhatCountsWithoutANamespace) {
    EXPECT_EQ(reference({{"Quantity", "queryItem"},
                         {"D", "queryItemFolder"},
                         {"Orders", "querySubject"},
                         {"F", "folder"},
                         {"Odd", "unknownClass"}}),
              "[Orders].[Quantity]");
}

TEST_F(Classification, NamesANamespaceInFrontAlone) {
    EXPECT_EQ(reference({{"Sales", "namespace"}, {"Orders", "querySubject"}}), "[Sales]");
}

TEST_F(Classification, AppendsToTheReferenceThatIsThere) {
    EXPECT_EQ(reference({{"Open", "filter"}, {"Sales", "namespace"}}, "x"), "x.[Sales].[Open]");
}

TEST_F(Classification, WritesABracketInANameUnchanged) {
    EXPECT_EQ(reference({{"a]b", "queryItem"}, {"]", "namespace"}}), "[]].[a]b]");
}

TEST_F(Classification, BuildsAReferenceFromParts) {
    auto const built = [&](std::list<I18NString> const& parts, char const* before = "") {
        I18NString text(before);
        scene.provider.BuildObjectReference(parts, text);
        return text.toUtf8();
    };
    EXPECT_EQ(built({"Sales", "Orders"}), "[Sales].[Orders]");
    EXPECT_EQ(built({"a]b"}), "[a]b]");
    EXPECT_EQ(built({}), "");
    EXPECT_EQ(built({""}), "[]");
    EXPECT_EQ(built({"Sales", "Orders"}, "x"), "x.[Sales].[Orders]");
}

TEST_F(Classification, TakesANamespaceForItself) {
    I18NString name;
    EXPECT_TRUE(
        scene.provider.IsNamespaceOrShortcutToNamespace(locale(), "namespace", "Any", name));
    EXPECT_EQ(name.toUtf8(), "Any");
    I18NString untouched("untouched");
    EXPECT_FALSE(
        scene.provider.IsNamespaceOrShortcutToNamespace(locale(), "folder", "Sales", untouched));
    EXPECT_EQ(untouched.toUtf8(), "untouched");
}

// covers quirk: shortcut-ends-a-reference
TEST_F(Classification, TakesAShortcutForTheNamespaceThatItNamesOrLiesIn) {
    EXPECT_EQ(boundary("ToSpace"), "ToSpace");
    EXPECT_EQ(boundary("ToFilter"), "Sales");
    EXPECT_EQ(boundary("None"), "Sales");
    EXPECT_EQ(boundary("Unknown"), "no, untouched");
    EXPECT_EQ(
        reference({{"Quantity", "queryItem"}, {"ToSubject", "shortcut"}, {"Lost", "namespace"}}),
        "[Lost].[Quantity]");
}

TEST_F(Classification, LetsTheFirstOfLikeNamedShortcutsDecide) {
    EXPECT_EQ(boundary("Twin"), "Lost");
}

TEST_F(Classification, PassesOverAShortcutInNoNamespace) {
    loseNamespace();
    EXPECT_EQ(boundary("Twin"), "Sales");
    EXPECT_EQ(boundary("ToSpace"), "ToSpace");
    EXPECT_EQ(boundary("ToSubject"), "no, untouched");
}

TEST_F(Classification, KeepsTheShortcutsNameForANamespaceWithoutOne) {
    EXPECT_EQ(boundary("InUnnamed"), "InUnnamed");
    EXPECT_EQ(reference({{"InUnnamed", "shortcut"}}), "[InUnnamed]");
}

TEST_F(Classification, NamesAShortcutInNoNamespaceByWhatItStandsFor) {
    loseNamespace();
    EXPECT_EQ(reference({{"ToSubject", "shortcut"}, {"Sales", "namespace"}}),
              "[Sales].[ToSubject]");
    scene.model.invalidate(scene.model.byId("l2")); // has no name, see below
    EXPECT_EQ(reference({{"ToItem", "shortcut"}, {"Sales", "namespace"}}), "[Sales]");
    EXPECT_EQ(reference({{"Unknown", "shortcut"}, {"Sales", "namespace"}}), "[Sales]");
}

TEST_F(Classification, RefusesALikeNamedShortcutToNothingAndKeepsTheReference) {
    VexMDMaPath path{{"Orders", "querySubject"}, {"Broken", "shortcut"}, {"Sales", "namespace"}};
    I18NString text("x");
    expectFailure([&] { scene.provider.GetReferenceForElement(locale(), path, text); }, 1171122674,
                  "VexMDMaProvider", 550, "VexMDMaProvider::FindShortcutReference", {"Broken"});
    EXPECT_EQ(text.toUtf8(), "x");
    expectFailure([&] { counts("shortcut", "Broken"); }, 1171122674, "VexMDMaProvider", 550,
                  "VexMDMaProvider::FindShortcutReference", {"Broken"});
}

TEST_F(Classification, CountsFourClassesForThemselves) {
    auto const isCounted = [&](char const* className) {
        return scene.provider.IsQuerySubjectOrQueryItemOrFilterOrCalculation(className, "any");
    };
    for (char const* const name : {"querySubject", "queryItem", "filter", "calculation"}) {
        EXPECT_TRUE(isCounted(name)) << name;
    }
    for (char const* const name :
         {"namespace", "folder", "shortcut", "queryItemFolder", "querysubject", "QueryItem", ""}) {
        EXPECT_FALSE(isCounted(name)) << name;
    }
}

TEST_F(Classification, CountsShortcutsToQuerySubjectsFiltersAndCalculations) {
    EXPECT_TRUE(counts("shortcut", "ToSubject"));
    EXPECT_TRUE(counts("shortcut", "ToFilter"));
    EXPECT_TRUE(counts("shortcut", "ToCalculation"));
    EXPECT_FALSE(counts("shortcut", "ToSpace"));
    EXPECT_FALSE(counts("shortcut", "None"));
    EXPECT_FALSE(counts("shortcut", "Unknown"));
    EXPECT_FALSE(counts("querySubject", "ToSubject"));
}

TEST_F(Classification, CountsNoShortcutToAQueryItem) {
    scene.model.invalidate(scene.model.byId("l2"));
    EXPECT_FALSE(counts("shortcut", "ToItem"));
}

// covers quirk: unnamed-shortcut-repeats-the-name-before
TEST_F(Classification, TakesAShortcutWithoutANameForLikeNamedToTheOneBefore) {
    // After the shortcut to the query item stands one without a name.
    EXPECT_TRUE(counts("shortcut", "ToItem"));
}

TEST_F(Classification, FindsTheNearestNamespaceAboveAnElement) {
    EXPECT_EQ(parentNamespace("i"), "n");
    EXPECT_EQ(parentNamespace("x"), "n");
    EXPECT_EQ(parentNamespace("top"), "root");
    EXPECT_EQ(parentNamespace("n"), "root");
    EXPECT_EQ(parentNamespace("root"), "none");
    EXPECT_EQ(parentNamespace("m"), "none");
}

TEST_F(Classification, SearchesTheModelAnewForEachShortcut) {
    int const before = scene.model.calls().count(Call::GetElementsByTagName);
    boundary("ToSpace");
    boundary("ToSpace");
    counts("shortcut", "ToSubject");
    EXPECT_EQ(scene.model.calls().count(Call::GetElementsByTagName), before + 3);
}

} // namespace
