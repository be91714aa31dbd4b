#include "tests/host/store/image/ModelProbe.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

char const* const sales = R"(<model id="m" defaultLocale="en">
  <namespace id="n" name="Sales" role="top" class="special">
    <folder id="f" name="Facts">
      <querySubject id="q" name="Orders"><queryItem id="i1"/><queryItem id="i2" role="key"/></querySubject>
      <filter id="x">  a  <property name="p"/> b </filter>
    </folder>
    <querySubject id="q2"><queryItem id="i3"/><filter id="x2"/><queryItem id="i4"/></querySubject>
  </namespace>
</model>)";

using Probe = ModelProbe;

TEST(ModelElement, IsNamedByItsClassAndTellsWhatItsAttributesSay) {
    Probe const probe(sales);
    VexObject const element(probe.id("n"));
    I18NString text;
    EXPECT_TRUE(element.GetName(text));
    EXPECT_EQ(text, "namespace");
    EXPECT_TRUE(element.GetId(text));
    EXPECT_EQ(text, "n");
    EXPECT_TRUE(element.GetRole(text));
    EXPECT_EQ(text, "top");
    EXPECT_TRUE(element.GetClass(text));
    EXPECT_EQ(text, "special");
}

TEST(ModelElement, LeavesTheTextAloneWhenItHasNone) {
    Probe const probe("<model><a id=''/></model>");
    VexObject const element(Probe::children(probe.root())[0]);
    I18NString text("kept");
    EXPECT_FALSE(element.GetId(text));
    EXPECT_FALSE(element.GetRole(text));
    EXPECT_FALSE(element.GetClass(text));
    EXPECT_FALSE(element.GetValue(text, true));
    EXPECT_EQ(text, "kept");
}

TEST(ModelElement, HasItsOwnTextTrimmedAndWithoutThatOfOthersAsValue) {
    Probe const probe(sales);
    EXPECT_EQ(Probe::text(probe.id("x")), "a   b");
    EXPECT_EQ(Probe::text(probe.id("f")), "(empty)");
}

TEST(ModelElement, TrimsEveryUnicodeWhiteSpaceAndNothingElse) {
    Probe const probe(
        "<model><a id='1'>&#x2003;&#xA0;x&#x3000;</a><a id='2'>&#x200B;y</a></model>");
    EXPECT_EQ(Probe::text(probe.id("1")), "x");
    EXPECT_EQ(Probe::text(probe.id("2")), "\u200By");
}

TEST(ModelElement, HasTheEnclosingElementAsParentAndTheRootHasNone) {
    Probe const probe(sales);
    EXPECT_EQ(VexObject(probe.id("f")).GetParent(), probe.id("n"));
    EXPECT_EQ(VexObject(probe.id("n")).GetParent(), probe.root());
    EXPECT_FALSE(VexObject(probe.root()).GetParent().IsNotNull());
}

TEST(ModelElement, ListsItsChildrenInDocumentOrder) {
    Probe const probe(sales);
    EXPECT_THAT(Probe::ids(Probe::children(probe.id("q2"))), ElementsAre("i3", "x2", "i4"));
    EXPECT_THAT(Probe::ids(Probe::children(probe.id("i3"))), IsEmpty());
    EXPECT_TRUE(VexObject(probe.id("q2")).hasChildObjects());
    EXPECT_FALSE(VexObject(probe.id("i3")).hasChildObjects());
}

TEST(ModelElement, FiltersItsChildrenByClassAndRole) {
    Probe const probe(sales);
    I18NString const item("queryItem");
    I18NString const key("key");
    I18NString const unknown("nowhere");
    Vex_Handle_Collection found;
    VexObject(probe.id("q2")).childObjects(found, &item, nullptr);
    EXPECT_THAT(Probe::ids(found), ElementsAre("i3", "i4"));
    found.clear();
    VexObject(probe.id("q")).childObjects(found, &item, &key);
    EXPECT_THAT(Probe::ids(found), ElementsAre("i2"));
    found.clear();
    VexObject(probe.id("q")).childObjects(found, nullptr, &key);
    EXPECT_THAT(Probe::ids(found), ElementsAre("i2"));
    found.clear();
    VexObject(probe.id("q")).childObjects(found, &unknown, nullptr);
    EXPECT_THAT(Probe::ids(found), IsEmpty());
}

TEST(ModelElement, FindsElementsOfAClassBelowItButNotItself) {
    Probe const probe(sales);
    EXPECT_THAT(Probe::ids(Probe::below(probe.root(), "queryItem")),
                ElementsAre("i1", "i2", "i3", "i4"));
    EXPECT_THAT(Probe::ids(Probe::below(probe.id("f"), "queryItem")), ElementsAre("i1", "i2"));
    EXPECT_THAT(Probe::ids(Probe::below(probe.id("q"), "querySubject")), IsEmpty());
    EXPECT_THAT(Probe::ids(Probe::below(probe.root(), "nowhere")), IsEmpty());
    EXPECT_THAT(Probe::ids(Probe::below(probe.root(), "property")), IsEmpty());
}

TEST(ModelElement, AppendsToTheListsItIsGiven) {
    Probe const probe(sales);
    Vex_Handle_Collection found;
    VexObject const element(probe.id("q"));
    element.childObjects(found, nullptr, nullptr);
    element.getElementsByTagName("queryItem", found);
    element.Properties(found, nullptr, nullptr, false);
    EXPECT_EQ(found.size(), 6U);
}

TEST(ModelElement, HasTheModelsDefaultLocale) {
    Probe const probe(sales);
    EXPECT_EQ(VexObject(probe.id("q")).GetLocale()->getName(), "en");
}

TEST(ModelElement, OfAnUnknownClassAndOfTheClassModelIsAnObject) {
    Probe const probe("<model><model id='inner'><Zebra.x id='z'/></model></model>");
    EXPECT_EQ(Probe::name(probe.id("inner")), "model");
    EXPECT_EQ(Probe::name(probe.id("z")), "Zebra.x");
}

TEST(ModelElement, HandsOutOneTextForOneClass) {
    Probe const probe(sales);
    I18NString first;
    I18NString second;
    VexObject(probe.id("i1")).GetName(first);
    VexObject(probe.id("i4")).GetName(second);
    EXPECT_EQ(first.utf16(), second.utf16());
}

TEST(ModelElement, IsFoundByItsIdAsWrittenAndNoOther) {
    Probe const probe("<model><a id='A'/><b id='a'/><c id=' a'/></model>");
    EXPECT_EQ(Probe::name(probe.id("A")), "a");
    EXPECT_EQ(Probe::name(probe.id("a")), "b");
    EXPECT_EQ(Probe::name(probe.id(" a")), "c");
    EXPECT_FALSE(probe.id("").IsNotNull());
    EXPECT_FALSE(probe.id("aa").IsNotNull());
}

TEST(ModelElement, StandsAtItsPlaceInDocumentOrder) {
    Probe const probe(sales);
    EXPECT_EQ(probe.model().elementCount(), 11U);
    EXPECT_EQ(probe.model().getElement(0), probe.root());
    EXPECT_EQ(probe.model().getElement(2), probe.id("f"));
    EXPECT_FALSE(probe.model().getElement(11).IsNotNull());
}

TEST(ModelElement, IsValidWhileItsModelIsLoaded) {
    auto model = vex::loadModelText(sales, "test.model.xml");
    VEX_HANDLE const object = model->findById("q");
    EXPECT_TRUE(VexObject(object).IsValid());
    model.reset();
    EXPECT_FALSE(VexObject(object).IsValid());
    I18NString text("kept");
    EXPECT_FALSE(VexObject(object).GetName(text));
    EXPECT_EQ(text, "kept");
}

TEST(ModelElement, KeepsItsHandleToItselfWhenAModelIsLoadedAgain) {
    Probe const first(sales);
    Probe const second(sales);
    EXPECT_NE(first.id("q"), second.id("q"));
    EXPECT_EQ(Probe::idOf(first.id("q")), "q");
    EXPECT_EQ(Probe::idOf(second.id("q")), "q");
}

TEST(ModelElement, IsNamedByNoHandleOutsideTheModelsRange) {
    Probe const probe("<model><a/></model>");
    std::uint32_t const first = probe.root().Number();
    EXPECT_FALSE(probe.model().IsObject(VEX_HANDLE(first - 1)));
    EXPECT_FALSE(VexObject(VEX_HANDLE(first + 1'000)).IsValid());
    EXPECT_FALSE(VexObject(VEX_HANDLE(0xFFFF'FFFF)).IsValid());
}

// Among few children of many descendants, and among many children of few of the class.
TEST(ModelElement, AClassOfMembersHoldsThoseOfTheObjectAndNoneBelow) {
    std::string few = "<few id='few'>";
    std::string many = "<many id='many'>";
    for (int number = 0; number < 100; ++number) {
        few += number % 50 == 0 ? "<box><b/><b/><box><b/></box></box>" : "";
        many += "<box/>";
    }
    few += "<b id='b1'/><box><b/></box><b id='b2' role='r'/></few>";
    many += "<b id='b3'><b/></b><box/><b id='b4' role='r'/><box/></many>";
    ModelProbe const probe("<model>" + few + many + "</model>");
    struct Row {
        char const* parent;
        std::vector<std::string> all;
        std::vector<std::string> withRole;
    };
    for (Row const& row : {Row{"few", {"b1", "b2"}, {"b2"}}, Row{"many", {"b3", "b4"}, {"b4"}}}) {
        VexObject const parent(probe.id(row.parent));
        I18NString const cls("b");
        I18NString const role("r");
        Vex_Handle_Collection found;
        parent.childObjects(found, &cls, nullptr);
        EXPECT_EQ(ModelProbe::ids(found), row.all);
        EXPECT_EQ(
            ModelProbe::ids(ModelProbe::children(ModelProbe::property(probe.id(row.parent), "b"))),
            row.all);
        found.clear();
        parent.childObjects(found, &cls, &role);
        EXPECT_EQ(ModelProbe::ids(found), row.withRole);
    }
}

TEST(ModelElement, AnObjectWithoutAMemberOfAClassHasNoCollectionOfIt) {
    ModelProbe const probe("<model><a id='a'><box><b/><b/><b/></box><c/></a><b/></model>");
    EXPECT_FALSE(ModelProbe::property(probe.id("a"), "b").IsNotNull());
    EXPECT_TRUE(ModelProbe::property(probe.id("a"), "c").IsNotNull());
    EXPECT_EQ(ModelProbe::children(ModelProbe::property(probe.root(), "b")).size(), 1U);
}

} // namespace
