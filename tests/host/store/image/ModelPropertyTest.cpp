#include "tests/host/store/image/ModelProbe.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Probe = ModelProbe;

TEST(ModelProperty, ComesFromAttributesFirstAndThenFromPropertyElements) {
    Probe const probe(R"(<model><a id="1" role="r" class="c" y="1" x="2" xml:lang="en">
        <property name="p">3</property><b/><property name="q">4</property></a></model>)");
    Vex_Handle_Collection const found = Probe::properties(probe.id("1"));
    EXPECT_THAT(Probe::names(found), ElementsAre("y", "x", "p", "q", "b"));
    EXPECT_THAT(Probe::values(found), ElementsAre("1", "2", "3", "4", "(empty)"));
}

TEST(ModelProperty, IsNotMadeOfAttributesThatBelongToXml) {
    Probe const probe(
        "<model><a id='1' xmlns='u' xmlns:p='v' xml:space='preserve' xmlish='w'/></model>");
    EXPECT_THAT(Probe::names(Probe::properties(probe.id("1"))), ElementsAre("xmlish"));
}

TEST(ModelProperty, WithoutTextHasNoValue) {
    Probe const probe("<model><a id='1' x=''><property name='p'> </property></a></model>");
    EXPECT_EQ(Probe::value(probe.id("1"), "x"), "(empty)");
    EXPECT_EQ(Probe::value(probe.id("1"), "p"), "(empty)");
}

TEST(ModelProperty, KeepsTheWhiteSpaceOfAnAttribute) {
    Probe const probe("<model><a id='1' x=' v '/></model>");
    EXPECT_EQ(Probe::value(probe.id("1"), "x"), " v ");
}

TEST(ModelProperty, KnowsItsNameRoleLocaleAndOwner) {
    Probe const probe(R"(<model><a id="1" x="v">
        <property name="p" locale="de-at" role="label">w</property></a></model>)");
    VEX_HANDLE const plain = Probe::property(probe.id("1"), "x");
    VEX_HANDLE const localised = Probe::property(probe.id("1"), "p", "de_AT");
    I18NString text("kept");
    EXPECT_EQ(Probe::name(localised), "p");
    EXPECT_EQ(VexObject(localised).GetLocale()->getName(), "de_AT");
    EXPECT_EQ(VexObject(localised).GetParent(), probe.id("1"));
    EXPECT_FALSE(VexObject(plain).GetRole(text));
    EXPECT_FALSE(VexObject(localised).GetId(text));
    EXPECT_FALSE(VexObject(localised).GetClass(text));
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(VexObject(plain).GetLocale(), nullptr);
    EXPECT_TRUE(VexObject(localised).GetRole(text));
    EXPECT_EQ(text, "label");
}

TEST(ModelProperty, NamedIdHasTheElementsIdAndIsNotListed) {
    Probe const probe("<model><a id='1' ID='other'/><a x='2'/></model>");
    VEX_HANDLE const id = Probe::property(probe.id("1"), "ID");
    EXPECT_EQ(Probe::text(id), "1");
    EXPECT_EQ(Probe::name(id), "ID");
    EXPECT_EQ(VexObject(id).GetParent(), probe.id("1"));
    EXPECT_THAT(Probe::values(Probe::properties(probe.id("1"))), ElementsAre("other"));
    EXPECT_FALSE(Probe::property(Probe::children(probe.root())[1], "ID").IsNotNull());
}

TEST(ModelProperty, IsListedBeforeTheCollectionsOfTheChildren) {
    Probe const probe(
        R"(<model><a id="1"><c/><b/><property name="p">v</property><c/></a></model>)");
    EXPECT_THAT(Probe::names(Probe::properties(probe.id("1"))), ElementsAre("p", "c", "b"));
    EXPECT_TRUE(VexObject(probe.id("1")).hasProperties());
}

TEST(ModelProperty, ThatIsACollectionHoldsTheChildrenOfItsClass) {
    Probe const probe("<model><a id='1'><c id='c1'/><b><c/></b><c id='c2'/></a></model>");
    VEX_HANDLE const collection = Probe::property(probe.id("1"), "c");
    EXPECT_THAT(Probe::ids(Probe::children(collection)), ElementsAre("c1", "c2"));
    EXPECT_TRUE(VexObject(collection).hasChildObjects());
    EXPECT_FALSE(VexObject(collection).hasProperties());
    EXPECT_EQ(VexObject(collection).GetParent(), probe.id("1"));
    EXPECT_EQ(VexObject(collection).GetLocale(), nullptr);
    EXPECT_EQ(Probe::text(collection), "(empty)");
    EXPECT_THAT(Probe::properties(collection), IsEmpty());
    EXPECT_THAT(Probe::below(collection, "c"), IsEmpty());
}

TEST(ModelProperty, ThatIsACollectionFiltersItsMembersLikeAnElement) {
    Probe const probe("<model><c id='c1'/><c id='c2' role='r'/><b role='r'/></model>");
    VEX_HANDLE const collection = Probe::property(probe.root(), "c");
    I18NString const b("b");
    I18NString const role("r");
    Vex_Handle_Collection found;
    VexObject(collection).childObjects(found, &b, nullptr);
    EXPECT_THAT(found, IsEmpty());
    VexObject(collection).childObjects(found, nullptr, &role);
    EXPECT_THAT(Probe::ids(found), ElementsAre("c2"));
}

TEST(ModelProperty, ThatIsSimpleComesBeforeACollectionOfItsName) {
    Probe const probe("<model><a id='1' c='simple'><c/></a></model>");
    EXPECT_EQ(Probe::value(probe.id("1"), "c"), "simple");
}

TEST(ModelProperty, ThatNobodyHasIsNull) {
    Probe const probe("<model><a id='1'/></model>");
    EXPECT_FALSE(Probe::property(probe.id("1"), "name").IsNotNull());
    EXPECT_FALSE(Probe::property(probe.id("1"), "never heard of").IsNotNull());
    EXPECT_FALSE(VexObject(probe.id("1")).hasProperties());
}

TEST(ModelProperty, MatchesTheTextThatALocaleFindsWhole) {
    Probe const probe(R"(<model defaultLocale="en"><a id="1" x="long enough to take blocks">
        <property name="p" locale="en">a</property><property name="p" locale="de">b</property>
        <property name="e" locale="de"/><property name="e" locale="en">c</property>
        <b/></a></model>)");
    VEX_HANDLE const object = probe.id("1");
    I18NLocale const german("de_AT");
    auto const match = [&](char const* name, I18NLocale const* locale, char const* text) {
        VexTextMatch result = VexTextMatch::Same;
        VexObject::FindPropertyValue({&object, 1}, name, locale, text, result);
        return result;
    };
    EXPECT_EQ(match("x", nullptr, "long enough to take blocks"), VexTextMatch::Same);
    EXPECT_EQ(match("x", nullptr, "long enough to take block"), VexTextMatch::Different);
    EXPECT_EQ(match("x", nullptr, "long enough to take blocks!"), VexTextMatch::Different);
    EXPECT_EQ(match("x", nullptr, ""), VexTextMatch::Different);
    EXPECT_EQ(match("p", &german, "b"), VexTextMatch::Same);
    EXPECT_EQ(match("p", &german, "a"), VexTextMatch::Different);
    EXPECT_EQ(match("p", nullptr, "a"), VexTextMatch::Same);
    EXPECT_EQ(match("ID", nullptr, "1"), VexTextMatch::Same);
    EXPECT_EQ(match("e", &german, ""), VexTextMatch::NoText); // its value has no text
    EXPECT_EQ(match("b", nullptr, ""), VexTextMatch::NoText); // a collection
    EXPECT_EQ(match("none", nullptr, ""), VexTextMatch::NoText);
}

TEST(ModelProperty, MatchesManyObjectsOfAllKindsInTheirOrder) {
    std::string text = "<model id='m' name='x'>";
    std::string expected;
    for (int i = 0; i < 100; ++i) { // more than are compared at once
        bool const isNamed = i % 3 == 0;
        text += isNamed      ? "<a name='wanted name'/>"
                : i % 3 == 1 ? "<a name='wanted nam' x='1'/>"
                             : "<b><name/></b>";
        expected += isNamed ? "=" : i % 3 == 1 ? "!" : "0";
    }
    Probe const probe((text + "</model>").c_str());
    Vex_Handle_Collection objects;
    VexObject(probe.id("m")).childObjects(objects, nullptr, nullptr);
    objects.push_back(Probe::property(probe.id("m"), "name")); // a property has none itself
    objects.push_back(Probe::property(probe.id("m"), "a"));    // nor has a collection
    expected += "00";
    std::span<VEX_HANDLE const> left(objects.begin(), objects.end());
    std::string found;
    while (!left.empty()) {
        VexTextMatch match = VexTextMatch::Different;
        std::size_t const before =
            VexObject::FindPropertyValue(left, "name", nullptr, "wanted name", match);
        found += std::string(before, '!');
        left = left.subspan(before);
        if (!left.empty()) {
            found += match == VexTextMatch::Same ? '=' : '0';
            left = left.subspan(1);
        }
    }
    EXPECT_EQ(found, expected);
}

TEST(ModelProperty, IsPassedOverAsLongAsItsTextDiffers) {
    std::string text = "<model id='m'>";
    for (int i = 0; i < 100; ++i) { // more than are compared at once
        text += "<a name='other name'/>";
    }
    Probe const probe((text + "<a name='wanted name'/><a name='other name'/></model>").c_str());
    Vex_Handle_Collection objects;
    VexObject(probe.id("m")).childObjects(objects, nullptr, nullptr);
    std::span<VEX_HANDLE const> const all(objects.begin(), objects.end());
    VexTextMatch match = VexTextMatch::NoText;
    EXPECT_EQ(VexObject::FindPropertyValue(all, "name", nullptr, "wanted name", match), 100U);
    EXPECT_EQ(match, VexTextMatch::Same);
    EXPECT_EQ(VexObject::FindPropertyValue(all, "name", nullptr, "no such name", match), 102U);
    EXPECT_EQ(match, VexTextMatch::Different);
}

TEST(ModelProperty, IsFilteredByNameAndRole) {
    Probe const probe(R"(<model><a id="1" x="1"><property name="y" role="r">2</property>
        <property name="x" role="r">3</property><b/></a></model>)");
    I18NString const x("x");
    I18NString const b("b");
    I18NString const role("r");
    I18NString const empty;
    auto const filtered = [&](I18NString const* name, I18NString const* wantedRole) {
        Vex_Handle_Collection found;
        VexObject(probe.id("1")).Properties(found, name, wantedRole, true);
        return Probe::values(found);
    };
    EXPECT_THAT(filtered(&x, nullptr), ElementsAre("1", "3"));
    EXPECT_THAT(filtered(nullptr, &role), ElementsAre("2", "3"));
    EXPECT_THAT(filtered(&x, &role), ElementsAre("3"));
    EXPECT_THAT(filtered(&b, nullptr), ElementsAre("(empty)"));
    EXPECT_THAT(filtered(nullptr, &empty), IsEmpty());
}

TEST(ModelProperty, IsFoundByRoleAsByName) {
    Probe const probe(R"(<model><a id="1" x="1">
        <property name="y" role="r" locale="de">zwei</property>
        <property name="y" role="r" locale="fr">deux</property></a></model>)");
    I18NLocale const french{I18NString("fr")};
    VexObject const element(probe.id("1"));
    EXPECT_EQ(Probe::text(element.GetPropertyByRole("r", &french)), "deux");
    EXPECT_EQ(Probe::text(element.GetPropertyByRole("r", nullptr)), "zwei");
    EXPECT_FALSE(element.GetPropertyByRole("s", nullptr).IsNotNull());
    EXPECT_FALSE(element.GetPropertyByRole("", nullptr).IsNotNull());
}

TEST(ModelProperty, MayHavePropertiesOfItsOwnAtAnyDepth) {
    Probe const probe(R"(<model><a id="1"><property name="p">  v
        <property name="q">w<property name="r" locale="de">z</property></property>
        <property name="q">w2</property><property name="s"><property name="t">u</property></property>
        </property></a></model>)");
    VEX_HANDLE const outer = Probe::property(probe.id("1"), "p");
    EXPECT_EQ(Probe::text(outer), "v");
    EXPECT_THAT(Probe::values(Probe::properties(outer)), ElementsAre("w", "w2", "(empty)"));
    EXPECT_TRUE(VexObject(outer).hasProperties());
    VEX_HANDLE const middle = Probe::property(outer, "q");
    EXPECT_EQ(VexObject(middle).GetParent(), outer);
    EXPECT_EQ(Probe::value(middle, "r", "de_CH"), "z");
    EXPECT_EQ(VexObject(Probe::property(middle, "r")).GetParent(), middle);
    EXPECT_EQ(Probe::value(Probe::property(outer, "s"), "t"), "u");
    EXPECT_FALSE(VexObject(Probe::property(middle, "r")).hasProperties());
    EXPECT_FALSE(Probe::property(middle, "ID").IsNotNull());
}

TEST(ModelProperty, StandsForTheLocalesOfTheModelWithOneEntryForEach) {
    Probe const probe(R"(<model defaultLocale="de-at"><locales><locale> en </locale>
        <locale>de-at</locale></locales></model>)");
    VEX_HANDLE const locales = Probe::property(probe.root(), "locales");
    EXPECT_THAT(Probe::names(Probe::properties(locales)), ElementsAre("locale", "locale"));
    EXPECT_THAT(Probe::values(Probe::properties(locales)), ElementsAre("en", "de_AT"));
    EXPECT_EQ(Probe::value(probe.root(), "defaultLocale"), "de_AT");
    EXPECT_EQ(probe.model().defaultLocale().getName(), "de_AT");
    EXPECT_EQ(probe.model().locales().size(), 2U);
}

TEST(ModelProperty, DefaultLocaleIsAmericanEnglishUnlessTheModelSaysSo) {
    Probe const probe("<model><a id='1' defaultLocale='anything'/></model>");
    EXPECT_EQ(probe.model().defaultLocale().getName(), "en_US");
    EXPECT_FALSE(Probe::property(probe.root(), "defaultLocale").IsNotNull());
    EXPECT_EQ(Probe::value(probe.id("1"), "defaultLocale"), "anything");
}

TEST(ModelProperty, OfAnOwnerWithVeryManyIsFoundByName) {
    std::string text = "<model><a id='1'>";
    for (int i = 0; i < 1'000; ++i) {
        std::string const number = std::to_string(i);
        text += "<property name='p" + number + "' locale='de'>" + number + "</property>";
    }
    Probe const probe(text + "</a></model>");
    EXPECT_EQ(Probe::value(probe.id("1"), "p0"), "0");
    EXPECT_EQ(Probe::value(probe.id("1"), "p777", "de"), "777");
    EXPECT_EQ(Probe::properties(probe.id("1")).size(), 1'000U);
}

} // namespace

namespace {

/// The own texts of what is found within the objects, one after another.
std::string within(Vex_Handle_Collection const& objects, char const* name, char const* text,
                   char const* tag, I18NLocale const* locale = nullptr) {
    Vex_Handle_Collection found;
    VexObject::FindElementsWithin({objects.begin(), objects.end()}, name, locale, text, tag, found);
    std::string texts;
    for (VEX_HANDLE const element : found) {
        I18NString own;
        VexObject(element).GetValue(own, true);
        texts += own.toUtf8();
    }
    return texts;
}

} // namespace

TEST(ModelProperty, LeadsToWhatLiesWithinTheElementsThatHaveItsText) {
    Probe const probe(R"(<model id="m" defaultLocale="en">
        <s id="1" kind="x"><i>a</i><g><i>b</i></g></s>
        <s id="2" kind="y"><i>c</i></s>
        <s id="3" kind="x"><j>d</j></s>
        <s id="4"><i>e</i></s>
        <s id="5" kind=""><i>f</i></s>
        <s id="6" other="x" kind="x"><i>g</i></s>
        <s id="7"><property name="kind" locale="de">x</property>
          <property name="kind" locale="en">y</property><i>h</i></s>
        <s id="8"><kind><i>k</i></kind></s>
        <t id="9" kind="x"><i>l</i></t></model>)");
    Vex_Handle_Collection objects;
    VexObject(probe.id("m")).childObjects(objects, nullptr, nullptr);
    objects.push_back(Probe::property(probe.id("1"), "kind")); // a property holds nothing
    objects.push_back(Probe::property(probe.id("m"), "s"));    // nor does a collection here
    EXPECT_EQ(within(objects, "kind", "x", "i"), "abgl");
    EXPECT_EQ(within(objects, "kind", "x", "j"), "d");
    EXPECT_EQ(within(objects, "kind", "y", "i"), "ch");
    EXPECT_EQ(within(objects, "kind", "", "i"), "");
    EXPECT_EQ(within(objects, "ID", "6", "i"), "g");
    EXPECT_EQ(within(objects, "unknown", "x", "i"), "");
    EXPECT_EQ(within(objects, "kind", "x", "unknown"), "");
    I18NLocale const german("de_AT");
    EXPECT_EQ(within(objects, "kind", "x", "i", &german), "abghl");
}

TEST(ModelProperty, LeadsOnceToWhatLiesWithinElementsInsideEachOther) {
    std::string deep = "<i>c</i>";
    for (int level = 0; level < 20; ++level) { // so many that they are searched otherwise
        deep = "<s kind='x'>" + deep + "</s>";
    }
    Probe const probe(("<model id='m'><s kind='x'><i>a</i><s kind='y'><i>b</i></s>" + deep +
                       "<i>d</i></s><s kind='x'><i>e</i></s></model>")
                          .c_str());
    Vex_Handle_Collection sets;
    VexObject(probe.id("m")).getElementsByTagName("s", sets);
    EXPECT_EQ(sets.size(), 23U);
    EXPECT_EQ(within(sets, "kind", "x", "i"), "abcde");
    EXPECT_EQ(within(sets, "kind", "y", "i"), "b");
}
