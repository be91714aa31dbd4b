#include "provider/VexMDMaProvider.h"
#include "tests/support/TestSession.h"

#include <string>

#include <gtest/gtest.h>

namespace {

class VexMDMaProviderSchemaTest : public testing::Test {
protected:
    using Names = std::list<I18NString>;

    Names attributesOf(char const* id) {
        Vex_Handle_Collection properties = propertiesOf(id);
        Names names;
        m_provider.getAllAttributes(properties, names);
        return names;
    }
    Names collectionsOf(char const* id) {
        Vex_Handle_Collection properties = propertiesOf(id);
        Names names;
        m_provider.getAllCollections(properties, names);
        return names;
    }
    Vex_Handle_Collection propertiesOf(char const* id) const {
        Vex_Handle_Collection properties;
        m_model.Properties(m_model.byId(id), properties, nullptr, nullptr);
        return properties;
    }

    TestModel m_model{R"(
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
    TestSession m_session{m_model};
    VexMDMaProvider m_provider{m_session, "/content/m"};
};

} // namespace

TEST_F(VexMDMaProviderSchemaTest, ACollectionHoldsTheChildrenOfItsClassInOrder) {
    Vex_Handle_Collection found;
    m_provider.loadCollection(m_model.byId("n"), "filter", found);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0], m_model.byId("x1"));
    EXPECT_EQ(found[1], m_model.byId("x2"));
}

TEST_F(VexMDMaProviderSchemaTest, LoadedCollectionsAddUp) {
    Vex_Handle_Collection found = m_model.byIds({"deep"});
    m_provider.loadCollection(m_model.byId("n"), "querySubject", found);
    m_provider.loadCollection(m_model.byId("f"), "filter", found);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0], m_model.byId("deep"));
    EXPECT_EQ(found[1], m_model.byId("q"));
    EXPECT_EQ(found[2], m_model.byId("deep"));
}

TEST_F(VexMDMaProviderSchemaTest, ClassesAreComparedExactly) {
    Vex_Handle_Collection found;
    for (char const* const name : {"Filter", "filte", "filters", "", "*", "name"}) {
        m_provider.loadCollection(m_model.byId("n"), name, found);
    }
    EXPECT_TRUE(found.empty());
}

TEST_F(VexMDMaProviderSchemaTest, AnObjectWithoutChildrenLeavesTheListAndIsNotListed) {
    Vex_Handle_Collection found = m_model.byIds({"q"});
    m_model.calls().reset();
    m_provider.loadCollection(m_model.byId("x1"), "filter", found);
    m_provider.loadCollection(VEX_HANDLE(), "filter", found);
    EXPECT_EQ(found.size(), 1U);
    EXPECT_EQ(m_model.calls().count(Call::ChildObjects), 0);
}

TEST_F(VexMDMaProviderSchemaTest, AttributesArePropertiesWithoutChildrenAndProperties) {
    EXPECT_EQ(attributesOf("n"), (Names{"ID", "name", "first", "last"}));
}

TEST_F(VexMDMaProviderSchemaTest, WithoutPropertiesTheIdIsTheOnlyAttribute) {
    EXPECT_EQ(attributesOf("deep"), Names{"ID"});
}

TEST_F(VexMDMaProviderSchemaTest, AttributesAreAppended) {
    Vex_Handle_Collection none;
    Names names{"before"};
    m_provider.getAllAttributes(none, names);
    EXPECT_EQ(names, (Names{"before", "ID"}));
}

TEST_F(VexMDMaProviderSchemaTest, CollectionsArePropertiesWithChildrenOnly) {
    EXPECT_EQ(collectionsOf("n"), (Names{"filter", "querySubject", "folder"}));
    EXPECT_EQ(collectionsOf("deep"), Names{});
}

TEST_F(VexMDMaProviderSchemaTest, PropertiesOfAPropertyAreAskedForOnlyWhenItHasNoChildren) {
    Vex_Handle_Collection properties;
    properties.push_back(m_model.property(m_model.byId("n"), "filter"));
    Names names;
    m_model.calls().reset();
    m_provider.getAllAttributes(properties, names);
    EXPECT_EQ(m_model.calls().count(Call::HasChildObjects), 1);
    EXPECT_EQ(m_model.calls().count(Call::HasProperties), 0);
}

TEST_F(VexMDMaProviderSchemaTest, AClassNameIsTheNameWithoutTheSuffix) {
    I18NString name("before");
    m_provider.getClassName("querySubjectCollection", name);
    EXPECT_EQ(name, "querySubject");
    m_provider.getClassName("Collection", name);
    EXPECT_EQ(name, "");
}

// covers quirk: suffix-cut-unchecked
TEST_F(VexMDMaProviderSchemaTest, TheSuffixIsCutByItsLengthWhateverStandsThere) {
    I18NString name;
    m_provider.getClassName("filter0123456789", name);
    EXPECT_EQ(name, "filter");
    m_provider.getClassName("0123456789", name);
    EXPECT_EQ(name, "");
}

TEST_F(VexMDMaProviderSchemaTest, ANameShorterThanTheSuffixStaysWhole) {
    I18NString name;
    for (char const* const shorter : {"", "a", "ollection"}) {
        m_provider.getClassName(shorter, name);
        EXPECT_EQ(name, shorter);
    }
}
