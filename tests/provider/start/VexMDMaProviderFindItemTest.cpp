// A name among the members of a collection.

#include "VexObject.h"
#include "tests/provider/ProviderScene.h"

#include <gtest/gtest.h>

namespace {

constexpr char FindItemModel[] = R"(
<model id="m" defaultLocale="en">
  <locales><locale>en</locale><locale>de</locale></locales>
  <namespace id="root" name="Root">
    <namespace id="n" name="Sales">
      <folder id="f" name="Facts">
        <querySubject id="a"><property name="name" locale="en">One</property>
          <property name="name" locale="de">Eins</property></querySubject>
        <querySubject id="b"><property name="name" locale="en">Two</property>
          <property name="name" locale="de">Zwei</property></querySubject>
        <querySubject id="c" name="One"/>
        <queryItemFolder id="d" name="Dates"/>
      </folder>
      <folder id="nameless"><querySubject id="e" name="Inside"/></folder>
      <querySubject id="x"/>
      <shortcut id="toSubject" name="Subject" refobj="[Sales].[Two]"/>
      <shortcut id="toNamespace" name="Space" refobj="[Sales]"/>
      <shortcut id="toNothing" name="Nothing" refobj="[No]"/>
      <shortcut id="noTarget" name="None"/>
    </namespace>
  </namespace>
</model>)";

class FindItem : public testing::Test {
protected:
    FindItem() { scene.provider.getModelLocales(); }

    bool find(char const* name, std::initializer_list<char const*> ids) {
        std::list<I18NString> const names{name};
        items = scene.model.byIds(ids);
        auto part = names.begin();
        bool const found = scene.provider.FindItemInCollection(
            part, scene.session.GetCurrentLocale(), items, path);
        EXPECT_EQ(part, names.begin());
        return found;
    }
    std::string onlyItem() const {
        I18NString id;
        EXPECT_EQ(items.size(), 1U);
        VexObject(items[0]).GetId(id);
        return id.toUtf8();
    }

    ProviderScene scene{FindItemModel};
    Vex_Handle_Collection items;
    VexMDMaPath path;
};

TEST_F(FindItem, LeavesTheOneItemFound) {
    EXPECT_TRUE(find("Two", {"a", "b", "c"}));
    EXPECT_EQ(onlyItem(), "b");
}

TEST_F(FindItem, TakesTheFirstOfTwoThatMatch) {
    EXPECT_TRUE(find("One", {"c", "a"}));
    EXPECT_EQ(onlyItem(), "c");
    EXPECT_TRUE(find("One", {"b", "a", "c"}));
    EXPECT_EQ(onlyItem(), "a");
}

TEST_F(FindItem, ChangesNothingWhenNothingMatches) {
    path = {{"before", "folder"}};
    EXPECT_FALSE(find("Three", {"a", "b"}));
    EXPECT_EQ(items.size(), 2U);
    EXPECT_EQ(pathText(path), "folder:before");
    EXPECT_FALSE(find("one", {"a", "b"}));
    EXPECT_FALSE(find("One", {}));
}

TEST_F(FindItem, PutsTheItemInFrontAndItsAncestorsAtTheBackNearestFirst) {
    path = {{"before", "folder"}, {"outer", "namespace"}};
    EXPECT_TRUE(find("Two", {"b"}));
    EXPECT_EQ(pathText(path), "querySubject:Two folder:before namespace:outer folder:Facts "
                              "namespace:Sales namespace:Root");
}

TEST_F(FindItem, AddsNoAncestorsOfANamespaceOrAQueryItemFolder) {
    EXPECT_TRUE(find("Sales", {"n"}));
    EXPECT_EQ(pathText(path), "namespace:Sales");
    path.clear();
    EXPECT_TRUE(find("Dates", {"d"}));
    EXPECT_EQ(pathText(path), "queryItemFolder:Dates");
}

// covers quirk: unnamed-ancestor-repeats-the-name-before
TEST_F(FindItem, RepeatsTheNameBeforeForAnAncestorWithoutAName) {
    EXPECT_TRUE(find("Inside", {"e"}));
    EXPECT_EQ(pathText(path), "querySubject:Inside folder:Inside namespace:Sales namespace:Root");
}

TEST_F(FindItem, TriesTheModelsDefaultLocaleAndRecordsTheRequestsName) {
    scene.session.setLocale("de");
    EXPECT_TRUE(find("Two", {"a", "b"}));
    EXPECT_EQ(onlyItem(), "b");
    EXPECT_EQ(path.front().name.toUtf8(), "Zwei");
}

TEST_F(FindItem, RepeatsTheMatchingNameForAnAncestorWithoutAName) {
    ProviderScene own(R"(<model defaultLocale="en"><namespace name="N"><folder>
        <querySubject id="q"><property name="name" locale="en">Two</property>
        <property name="name" locale="de">Zwei</property></querySubject>
        </folder></namespace></model>)");
    own.session.setLocale("de");
    own.provider.getModelLocales();
    std::list<I18NString> const names{"Two"};
    auto part = names.begin();
    Vex_Handle_Collection found = own.model.byIds({"q"});
    EXPECT_TRUE(
        own.provider.FindItemInCollection(part, own.session.GetCurrentLocale(), found, path));
    EXPECT_EQ(pathText(path), "querySubject:Zwei folder:Two namespace:N");
}

// covers quirk: locale-is-paired-with-the-item-at-its-index
TEST_F(FindItem, ReadsEachSupportedLocaleFromTheItemAtTheLocalesIndex) {
    // The second locale is tried on the second item, and makes the first match.
    EXPECT_TRUE(find("Zwei", {"a", "b"}));
    EXPECT_EQ(onlyItem(), "a");
    EXPECT_EQ(path.front().name.toUtf8(), "One");
    EXPECT_FALSE(find("Eins", {"a", "b"}));
    EXPECT_TRUE(find("Eins", {"b", "a"}));
    EXPECT_EQ(onlyItem(), "b");
    EXPECT_FALSE(find("Zwei", {"a", "c", "b"}));
}

TEST_F(FindItem, PairsALocalePastTheLastItemWithNoName) {
    EXPECT_FALSE(find("Eins", {"a"}));
    EXPECT_TRUE(find("", {"a"}));
    EXPECT_EQ(onlyItem(), "a");
    EXPECT_EQ(path.front().name.toUtf8(), "One");
}

TEST_F(FindItem, FindsNoEmptyNameOutsideThePairs) {
    ProviderScene own(R"(<model><namespace name="N"><querySubject id="q"/></namespace></model>)");
    own.provider.getModelLocales();
    std::list<I18NString> const names{""};
    auto part = names.begin();
    Vex_Handle_Collection found = own.model.byIds({"q"});
    EXPECT_FALSE(
        own.provider.FindItemInCollection(part, own.session.GetCurrentLocale(), found, path));
}

TEST_F(FindItem, FindsAnItemWithoutANameByThePairOfAnother) {
    EXPECT_TRUE(find("Zwei", {"x", "b"}));
    EXPECT_EQ(onlyItem(), "x");
    EXPECT_EQ(pathText(path), "querySubject: namespace:Sales namespace:Root");
}

TEST_F(FindItem, KeepsTheShortcutAndSkipsAncestorsByItsTargetsClass) {
    EXPECT_TRUE(find("Space", {"toNamespace"}));
    EXPECT_EQ(onlyItem(), "toNamespace");
    EXPECT_EQ(pathText(path), "shortcut:Space");
    path.clear();
    EXPECT_TRUE(find("Subject", {"toSubject"}));
    EXPECT_EQ(onlyItem(), "toSubject");
    EXPECT_EQ(pathText(path), "shortcut:Subject namespace:Sales namespace:Root");
    path.clear();
    EXPECT_TRUE(find("None", {"noTarget"}));
    EXPECT_EQ(pathText(path), "shortcut:None namespace:Sales namespace:Root");
}

TEST_F(FindItem, RefusesAMatchingShortcutToNothing) {
    expectFailure([&] { find("Nothing", {"toNothing"}); }, 1171122674, "VexMDMaProvider", 550,
                  "VexMDMaProvider::FindShortcutReference", {"Nothing"});
    EXPECT_FALSE(find("Other", {"toNothing"}));
}

TEST_F(FindItem, StopsBelowTheOutermostElement) {
    EXPECT_TRUE(find("Root", {"root"}));
    EXPECT_EQ(pathText(path), "namespace:Root");
    ProviderScene own(R"(<model><folder id="f" name="Top"/></model>)");
    std::list<I18NString> const names{"Top"};
    auto part = names.begin();
    Vex_Handle_Collection found = own.model.byIds({"f"});
    path.clear();
    EXPECT_TRUE(
        own.provider.FindItemInCollection(part, own.session.GetCurrentLocale(), found, path));
    EXPECT_EQ(pathText(path), "folder:Top");
}

} // namespace
