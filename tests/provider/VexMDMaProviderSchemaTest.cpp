// The provider's own words for what an object is made of.

#include "provider/VexMDMaProvider.h"
#include "tests/support/TestSession.h"

#include <gtest/gtest.h>

namespace {

class VexMDMaProviderSchemaTest : public testing::Test {
protected:
    TestModel m_model{R"(<model><namespace id="n" name="N"><filter id="x"/><folder/></namespace>
                         </model>)"};
    TestSession m_session{m_model};
    VexMDMaProvider m_provider{m_session, "/content/m"};
};

} // namespace

TEST_F(VexMDMaProviderSchemaTest, CollectionsAndAttributesAreThoseOfTheModel) {
    Vex_Handle_Collection found;
    m_provider.loadCollection(m_model.byId("n"), "filter", found);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0], m_model.byId("x"));

    using Names = std::list<I18NString>;
    Vex_Handle_Collection properties;
    m_model.Properties(m_model.byId("n"), properties, nullptr, nullptr);
    Names attributes;
    m_provider.getAllAttributes(properties, attributes);
    EXPECT_EQ(attributes, (Names{"ID", "name"}));
    Names collections;
    m_provider.getAllCollections(properties, collections);
    EXPECT_EQ(collections, (Names{"filter", "folder"}));
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
