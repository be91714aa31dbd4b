#include "model/VexCollections.h"

#include "tests/support/TestModel.h"

#include <string>

#include <gtest/gtest.h>

namespace {

class Collections : public testing::Test {
protected:
    using Names = std::list<I18NString>;

    Names attributesOf(char const* id) {
        Vex_Handle_Collection properties = propertiesOf(id);
        Names names;
        ListAttributes(properties, names);
        return names;
    }
    Names collectionsOf(char const* id) {
        Vex_Handle_Collection properties = propertiesOf(id);
        Names names;
        ListCollections(properties, names);
        return names;
    }
    Vex_Handle_Collection propertiesOf(char const* id) const {
        Vex_Handle_Collection properties;
        model.Properties(model.byId(id), properties, nullptr, nullptr);
        return properties;
    }

    TestModel model{R"(
        <model id="m">
          <namespace id="n" name="N">
            <property name="first"/>
            <property name="group"><property name="inner">1</property></property>
            <property name="last" locale="en">x</property>
            <property name="last" locale="de">y</property>
            <filter id="x1"/><querySubject id="q"/><filter id="x2"/>
            <folder id="f"><filter id="deep"/></folder>
          </namespace>
        </model>)"};
};

} // namespace

TEST_F(Collections, ACollectionHoldsTheChildrenOfItsClassInOrder) {
    Vex_Handle_Collection found;
    LoadCollection(model.byId("n"), "filter", found);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0], model.byId("x1"));
    EXPECT_EQ(found[1], model.byId("x2"));
}

TEST_F(Collections, LoadedCollectionsAddUp) {
    Vex_Handle_Collection found = model.byIds({"deep"});
    LoadCollection(model.byId("n"), "querySubject", found);
    LoadCollection(model.byId("f"), "filter", found);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0], model.byId("deep"));
    EXPECT_EQ(found[1], model.byId("q"));
    EXPECT_EQ(found[2], model.byId("deep"));
}

TEST_F(Collections, ClassesAreComparedExactly) {
    Vex_Handle_Collection found;
    for (char const* const name : {"Filter", "filte", "filters", "", "*", "name"}) {
        LoadCollection(model.byId("n"), name, found);
    }
    EXPECT_TRUE(found.empty());
}

TEST_F(Collections, AnObjectWithoutChildrenLeavesTheListAndIsNotListed) {
    Vex_Handle_Collection found = model.byIds({"q"});
    model.calls().reset();
    LoadCollection(model.byId("x1"), "filter", found);
    LoadCollection(VEX_HANDLE(), "filter", found);
    EXPECT_EQ(found.size(), 1U);
    EXPECT_EQ(model.calls().count(Call::ChildObjects), 0);
}

TEST_F(Collections, AttributesArePropertiesWithoutChildrenAndProperties) {
    EXPECT_EQ(attributesOf("n"), (Names{"ID", "name", "first", "last"}));
}

TEST_F(Collections, WithoutPropertiesTheIdIsTheOnlyAttribute) {
    EXPECT_EQ(attributesOf("deep"), Names{"ID"});
}

TEST_F(Collections, AttributesAreAppended) {
    Vex_Handle_Collection none;
    Names names{"before"};
    ListAttributes(none, names);
    EXPECT_EQ(names, (Names{"before", "ID"}));
}

TEST_F(Collections, CollectionsArePropertiesWithChildrenOnly) {
    EXPECT_EQ(collectionsOf("n"), (Names{"filter", "querySubject", "folder"}));
    EXPECT_EQ(collectionsOf("deep"), Names{});
}

TEST_F(Collections, PropertiesOfAPropertyAreAskedForOnlyWhenItHasNoChildren) {
    Vex_Handle_Collection properties;
    properties.push_back(model.property(model.byId("n"), "filter"));
    Names names;
    model.calls().reset();
    ListAttributes(properties, names);
    EXPECT_EQ(model.calls().count(Call::HasChildObjects), 1);
    EXPECT_EQ(model.calls().count(Call::HasProperties), 0);
}
