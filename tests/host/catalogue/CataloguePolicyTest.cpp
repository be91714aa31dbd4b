#include "host/catalogue/Catalogue.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace {

/// A folder with a policy.
class CataloguePolicy : public testing::Test {
protected:
    CataloguePolicy() {
        std::string pattern = testing::TempDir() + "policyXXXXXX";
        m_folder = ::mkdtemp(pattern.data());
    }
    ~CataloguePolicy() override { std::filesystem::remove_all(m_folder); }

    std::shared_ptr<vex::Catalogue const> read(std::string const& policy,
                                               std::string const& entries) {
        std::ofstream(m_folder + "/p.yaml") << policy;
        return vex::readCatalogueText("<catalog>" + entries + "</catalog>", "c.xml", m_folder,
                                      m_found);
    }

    std::string m_folder;
    vex::Diagnostics m_found;
};

constexpr char governed[] = "<model path='/content/a' file='a.xml' policy='p.yaml'>"
                            "<grant role='clerk' view='own'/></model>";

TEST_F(CataloguePolicy, AddsItsGrantsAndUsers) {
    auto const catalogue =
        read("roles: {clerk: [v], chief: [v, w]}\n"
             "users: {ann: [clerk, chief], ben: chief}\n",
             std::string(governed) + "<user name='ann'><role>clerk</role></user>");
    ASSERT_NE(catalogue, nullptr);
    vex::CatalogueModel const& model = catalogue->models.front();
    ASSERT_EQ(model.grants.size(), 4U);
    EXPECT_EQ(model.grants[0].file, "");
    EXPECT_EQ(model.grants[1].view, "v");
    EXPECT_EQ(model.grants[1].file, m_folder + "/p.yaml");
    EXPECT_EQ(model.grants[1].line, 1U);
    ASSERT_EQ(catalogue->users.size(), 2U);
    EXPECT_EQ(catalogue->users[0].roles, (std::vector<I18NString>{"clerk", "chief"}));
    EXPECT_EQ(catalogue->users[1].name, "ben");
    EXPECT_EQ(availableViews(model, catalogue->users[1]), (std::vector<I18NString>{"v", "w"}));
}

TEST_F(CataloguePolicy, HoldsForEachModelThatNamesIt) {
    auto const catalogue =
        read("roles: {r: v}\nusers: {ann: r}",
             std::string(governed) + "<model path='/content/b' file='b.xml' policy='p.yaml'/>"
                                     "<model path='/content/c' file='c.xml'/>");
    ASSERT_NE(catalogue, nullptr);
    EXPECT_EQ(catalogue->models[0].policy, catalogue->models[1].policy);
    EXPECT_EQ(catalogue->models[1].grants.size(), 1U);
    EXPECT_EQ(catalogue->models[2].policy, nullptr);
    ASSERT_EQ(catalogue->users.size(), 1U);
    EXPECT_EQ(catalogue->users[0].roles.size(), 1U);
}

TEST_F(CataloguePolicy, ThatManyModelsShareGrantsOnlySoMuch) {
    std::string grants = "roles: {r: [";
    for (int view = 0; view < 2'000; ++view) {
        grants += "v,";
    }
    std::string models;
    for (int model = 0; model < 501; ++model) {
        models += "<model path='/content/" + std::to_string(model) + "' file='a' policy='p.yaml'/>";
    }
    EXPECT_EQ(read(grants + "]}", models), nullptr);
    ASSERT_EQ(m_found.size(), 1U);
    EXPECT_EQ(m_found[0].rule, "policy-too-large");
    EXPECT_EQ(m_found[0].file, "c.xml");
}

TEST_F(CataloguePolicy, IsReadNoFurtherThanItsLimit) {
    std::ofstream(m_folder + "/p.yaml") << "views: {}\n";
    EXPECT_EQ(vex::readCatalogueText(std::string("<catalog>") + governed + "</catalog>", "c.xml",
                                     m_folder, m_found, {.limit = {9, "--max-policy"}}),
              nullptr);
    ASSERT_EQ(m_found.size(), 1U);
    EXPECT_NE(m_found[0].text.find("--max-policy"), std::string::npos);
}

TEST_F(CataloguePolicy, ThatCannotBeReadIsAnErrorOfTheCatalogue) {
    EXPECT_EQ(read("views: []", governed), nullptr);
    ASSERT_EQ(m_found.size(), 1U);
    EXPECT_EQ(toString(m_found[0]), m_folder + "/p.yaml:1:8: error: views are a mapping of ids to "
                                               "rules");
    EXPECT_EQ(m_found[0].rule, "policy-unreadable");
    m_found.clear();
    EXPECT_EQ(read("", "<model path='/content/a' file='a.xml' policy='none.yaml'/>"), nullptr);
    ASSERT_EQ(m_found.size(), 1U);
    EXPECT_EQ(m_found[0].file, m_folder + "/none.yaml");
}

TEST_F(CataloguePolicy, IsLeftAloneWhereFilesAreNotToBeRead) {
    auto const catalogue =
        vex::readCatalogueText("<catalog><model path='a' file='b' policy='none.yaml'/></catalog>",
                               "c.xml", m_folder, m_found, {.areRead = false});
    ASSERT_NE(catalogue, nullptr);
    EXPECT_EQ(catalogue->models[0].policyFile, m_folder + "/none.yaml");
    EXPECT_EQ(catalogue->models[0].policy, nullptr);
}

} // namespace
