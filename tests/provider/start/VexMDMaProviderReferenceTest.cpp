// Requests that start at a reference.

#include "VexObject.h"
#include "tests/provider/ProviderScene.h"

#include <gtest/gtest.h>

namespace {

constexpr char StartFunction[] = "VexMDMaProvider::processStartAtRefRequest";

constexpr char ReferenceModel[] = R"(
<model id="m" defaultLocale="en"><namespace id="root" name="Root">
  <filter id="rootFilter" name="Top"/>
  <shortcut id="toSales" name="ToSales" refobj="[Sales]"/>
  <shortcut id="toSales2" name="ToSales" refobj="[Other]"/>
  <namespace id="n" name="Sales">
    <filter id="x" name="Open"><queryItem id="xi" name="Part"/></filter>
    <calculation id="c" name="Margin"/>
    <filter id="b1" name="Both"/><calculation id="b2" name="Both"/>
    <calculation id="e1" name="Either"/>
    <shortcut id="b3" name="Both" refobj="[Sales].[Orders]"/>
    <shortcut id="e2" name="Either" refobj="[Sales].[Orders]"/>
    <shortcut id="s" name="Link" refobj="[Sales].[Orders]"/>
    <folder name="F"><filter id="filed" name="Filed"/></folder>
    <querySubject id="q" name="Orders"><queryItem id="i" name="Quantity"/></querySubject>
    <namespace id="inner" name="Inner"><filter id="deep" name="Deep"/>
      <namespace id="innermost" name="Innermost"/></namespace>
  </namespace>
  <namespace id="other" name="Other"/>
</namespace></model>)";

std::string at(std::string const& reference, std::string const& properties = "*/@ID") {
    return "<Metadata start_atRef='" + reference + "'><Property a='" + properties +
           "'/><Property a='*/queryItem'/></Metadata>";
}

class ReferenceStart : public testing::Test {
protected:
    ProviderScene scene{ReferenceModel};
};

// The searches by themselves, from the candidates given.
class ReferenceSearch : public testing::Test {
protected:
    ReferenceSearch() { scene.open(); }

    I18NLocale const* locale() { return scene.session.GetCurrentLocale(); }

    std::string ids() const {
        std::string text;
        for (VEX_HANDLE const candidate : candidates) {
            I18NString id;
            VexObject(candidate).GetId(id);
            text += (text.empty() ? "" : " ") + id.toUtf8();
        }
        return text;
    }
    bool findMember(std::initializer_list<char const*> from, char const* first,
                    char const* second) {
        candidates = scene.model.byIds(from);
        return scene.provider.FindReferencedFilterOrCalculation({first, second}, locale(),
                                                                candidates, path);
    }
    bool findNamespace(std::initializer_list<char const*> from, char const* name) {
        candidates = scene.model.byIds(from);
        return scene.provider.FindReferencedNamespaces(name, locale(), candidates);
    }

    ProviderScene scene{ReferenceModel};
    Vex_Handle_Collection candidates;
    VexMDMaPath path;
};

TEST_F(ReferenceStart, WithTwoNamesIsAFilterCalculationOrShortcutOfANamespace) {
    EXPECT_EQ(scene.ask(at("[Sales].[Open]")), R"(<filter ID="x"><queryItem ID="xi"/></filter>)");
    EXPECT_EQ(scene.ask(at("[Sales].[Margin]")), R"(<calculation ID="c"/>)");
    EXPECT_EQ(scene.ask(at("[Sales].[Link]")),
              R"(<querySubject ID="q"><queryItem ID="i"/></querySubject>)");
    EXPECT_EQ(scene.ask(at("[Inner].[Deep]")), R"(<filter ID="deep"/>)");
}

TEST_F(ReferenceStart, PrefersAFilterToACalculationToAShortcut) {
    EXPECT_EQ(scene.ask(at("[Sales].[Both]")), R"(<filter ID="b1"/>)");
    EXPECT_EQ(scene.ask(at("[Sales].[Either]")), R"(<calculation ID="e1"/>)");
}

TEST_F(ReferenceStart, WithTwoNamesWritesNothingForAnythingElse) {
    for (char const* const reference : {"[Sales].[Orders]", "[Sales].[No]", "[Sales].[Filed]",
                                        "[Sales].[Inner]", "[Sales].[open]"}) {
        EXPECT_EQ(scene.ask(at(reference)), "") << reference;
    }
}

// covers quirk: failure-names-not-uniform
TEST_F(ReferenceStart, HasTwoOrThreeNames) {
    for (char const* const reference :
         {"[Sales]", " [Sales] ", "[Sales].[Orders].[Quantity].[x]", "[Sales].[a].[b].[c].[d]"}) {
        scene.expectRefused(at(reference), 1171135124, 866, StartFunction, {reference});
    }
}

TEST_F(ReferenceStart, WithThreeNamesIsAQueryItem) {
    EXPECT_EQ(scene.ask(at("[Sales].[Orders].[Quantity]")), R"(<queryItem ID="i"/>)");
}

TEST_F(ReferenceStart, GivesTheReferenceOfTheStartToItsMembersToo) {
    EXPECT_EQ(scene.ask(at("[Sales].[Open]", "*/@_ref")),
              R"(<filter _ref="[Sales].[Open]"><queryItem _ref="[Sales].[Open]"/></filter>)");
    EXPECT_EQ(scene.ask(at("[Sales].[Orders].[Quantity]", "*/@_ref")),
              R"(<queryItem _ref="[Sales].[Orders].[Quantity]"/>)");
}

TEST_F(ReferenceStart, GivesTheReferenceOfAShortcutToItsTargetsMembersToo) {
    EXPECT_EQ(scene.ask(at("[Sales].[Link]", "*/@_ref")),
              R"(<querySubject _ref="[Sales]"><queryItem _ref="[Sales]"/></querySubject>)");
}

TEST_F(ReferenceStart, BeginsPathsWithTheTextOfTheReference) {
    EXPECT_EQ(scene.ask(at(" [Sales].[Open]", "*/@_path")),
              R"(<filter _path=" [Sales].[Open]">)"
              R"(<queryItem _path=" [Sales].[Open].[Part]"/></filter>)");
}

TEST_F(ReferenceStart, IsShownAlwaysAndItsMembersByTheViews) {
    ProviderScene own(R"(<model><namespace id="n" name="Sales"><filter id="x" name="Open">
        <queryItem id="i" name="Part"/><queryItem id="j" name="Rest"/></filter></namespace>
        <securityViews><securityView id="v"><set kind="included"><item>j</item></set>
        </securityView></securityViews></model>)",
                      "/content/m");
    own.session.setViews({"v"});
    EXPECT_EQ(own.ask(at("[Sales].[Open]")), R"(<filter ID="x"><queryItem ID="j"/></filter>)");
}

TEST_F(ReferenceStart, EndsAtTheDepth) {
    EXPECT_EQ(scene.ask("<Metadata Depth='1' start_atRef='[Sales].[Open]'><Property a='*/@ID'/>"
                        "<Property a='*/queryItem'/></Metadata>"),
              R"(<filter ID="x"/>)");
}

TEST_F(ReferenceStart, ComesBackToItselfOnceForAShortcutWithoutAName) {
    ProviderScene own("<model><namespace><shortcut refobj='[]'/></namespace></model>");
    own.expectRefused(at("[].[a].[b]"), 1171025905, 898, StartFunction, {"b"});
}

TEST_F(ReferenceStart, NeedsAShortcutWhereTheFirstNameIsNotFoundAgain) {
    ProviderScene own("<model><namespace/></model>");
    own.expectRefused(at("[].[a].[b]"), 1170653716, 1080,
                      "VexMDMaProvider::FindReferencedShortcutQI", {""});
}

TEST_F(ReferenceSearch, LeavesTheMemberFoundAndItsPath) {
    EXPECT_TRUE(findMember({"other", "n"}, "Sales", "Margin"));
    EXPECT_EQ(ids(), "c");
    EXPECT_EQ(pathText(path), "calculation:Margin namespace:Sales namespace:Sales namespace:Root");
}

TEST_F(ReferenceSearch, KeepsTheNamespacesRecordWhenItHasNoSuchMember) {
    EXPECT_FALSE(findMember({"n"}, "Sales", "No"));
    EXPECT_EQ(ids(), "n");
    EXPECT_EQ(pathText(path), "namespace:Sales");
}

TEST_F(ReferenceSearch, ChangesNothingForAnUnknownFirstName) {
    EXPECT_FALSE(findMember({"other", "n"}, "No", "Open"));
    EXPECT_EQ(ids(), "other n");
    EXPECT_EQ(pathText(path), "");
}

// covers quirk: member-is-sought-in-the-first-candidate
TEST_F(ReferenceSearch, LooksIntoTheFirstCandidateWhenTheNamespaceIsNested) {
    EXPECT_FALSE(findMember({"root"}, "Inner", "Deep"));
    EXPECT_EQ(ids(), "root");
    EXPECT_TRUE(findMember({"root"}, "Inner", "Top"));
    EXPECT_EQ(ids(), "rootFilter");
    EXPECT_TRUE(findMember({"n", "root"}, "Innermost", "Open"));
    EXPECT_EQ(ids(), "x");
}

TEST_F(ReferenceSearch, FindsNamespacesAtAnyDepth) {
    EXPECT_TRUE(findNamespace({"root"}, "Sales"));
    EXPECT_TRUE(findNamespace({"root"}, "Innermost"));
    EXPECT_TRUE(findNamespace({"other", "q", "n"}, "Innermost"));
    EXPECT_FALSE(findNamespace({"root"}, "innermost"));
    EXPECT_FALSE(findNamespace({"other"}, "Sales"));
    EXPECT_FALSE(findNamespace({}, "Sales"));
}

TEST_F(ReferenceSearch, DoesNotCompareTheCandidatesThemselves) {
    EXPECT_FALSE(findNamespace({"n"}, "Sales"));
    EXPECT_FALSE(findNamespace({"root", "innermost"}, "Root"));
}

// covers quirk: nested-namespace-leaves-the-candidates
TEST_F(ReferenceSearch, LeavesTheCandidatesForANestedNamespace) {
    EXPECT_TRUE(findNamespace({"other", "root"}, "Inner"));
    EXPECT_EQ(ids(), "other root");
    EXPECT_FALSE(findNamespace({"other", "root"}, "No"));
    EXPECT_EQ(ids(), "other root");
}

TEST_F(ReferenceSearch, StopsAtTheFirstNestedNamespaceThatMatches) {
    int const before = scene.model.calls().count(Call::ChildObjects);
    findNamespace({"root", "n"}, "Sales");
    EXPECT_EQ(scene.model.calls().count(Call::ChildObjects), before + 1);
}

TEST_F(ReferenceSearch, ComparesNestedNamespacesInTheRequestsLocaleAlone) {
    ProviderScene own(R"(<model defaultLocale="en"><locales><locale>en</locale>
        <locale>de</locale></locales><namespace id="n"><namespace>
        <property name="name" locale="en">Sales</property>
        <property name="name" locale="de">Vertrieb</property></namespace></namespace></model>)");
    own.provider.getModelLocales();
    I18NLocale const german("de");
    Vex_Handle_Collection from = own.model.byIds({"n"});
    EXPECT_TRUE(own.provider.FindReferencedNamespaces("Vertrieb", &german, from));
    EXPECT_FALSE(own.provider.FindReferencedNamespaces("Sales", &german, from));
}

// The search for a query item behind a shortcut of the first name.
class ShortcutItemSearch : public ReferenceSearch {
protected:
    std::string write(std::list<I18NString> const& names, bool expected = true) {
        RequestParts parts(scene, at("", "*/@_ref"));
        Vex_Handle_Collection unused;
        EXPECT_EQ(scene.provider.FindReferencedShortcutQI(parts.helper, names, "the text", 0,
                                                          parts.locale, parts.result(),
                                                          parts.engine, parts.visibility, unused),
                  expected);
        return parts.response.resultText();
    }
    void start(std::list<I18NString> const& names) {
        RequestParts parts(scene, at(""));
        Vex_Handle_Collection from = scene.model.byIds({"other"});
        scene.provider.ProcessStartAtRefRequest(parts.helper, names, "the text", 0, parts.locale,
                                                parts.result(), parts.engine, parts.visibility,
                                                from);
        written = parts.response.resultText();
    }
    std::string written;
};

TEST_F(ShortcutItemSearch, WritesWhatTheFirstShortcutOfTheNameLeadsTo) {
    EXPECT_EQ(write({"ToSales", "Orders", "Quantity"}),
              R"(<queryItem _ref="[ToSales].[Orders].[Quantity]"/>)");
}

TEST_F(ShortcutItemSearch, IsFalseWhenNoShortcutHasTheName) {
    EXPECT_EQ(write({"No", "Orders", "Quantity"}, false), "");
}

TEST_F(ShortcutItemSearch, LetsTheFailuresOfTheSearchPass) {
    expectFailure(
        [&] {
            write({"ToSales", "Orders", "No"});
        },
        1171025905, "VexMDMaProvider", 1398, "VexMDMaProvider::FindReferencedItem", {"No"});
}

TEST_F(ShortcutItemSearch, IsRefusedInAModelWithoutShortcuts) {
    ProviderScene own("<model><namespace id='other' name='Other'/></model>");
    RequestParts parts(own, at(""));
    Vex_Handle_Collection from = own.model.byIds({"other"});
    expectFailure(
        [&] {
            own.provider.ProcessStartAtRefRequest(parts.helper, {"A", "b", "c"}, "the text", 0,
                                                  parts.locale, parts.result(), parts.engine,
                                                  parts.visibility, from);
        },
        1170653716, "VexMDMaProvider", 1080, "VexMDMaProvider::FindReferencedShortcutQI", {"A"});
}

TEST_F(ShortcutItemSearch, IsWhatAStartFallsBackTo) {
    start({"ToSales", "Orders", "Quantity"});
    EXPECT_EQ(written, R"(<queryItem ID="i"/>)");
}

TEST_F(ShortcutItemSearch, LeavesTheLastNameToTheStartsFailure) {
    expectFailure(
        [&] {
            start({"No", "Orders", "Quantity"});
        },
        1171025905, "VexMDMaProvider", 898, StartFunction, {"Quantity"});
}

} // namespace
