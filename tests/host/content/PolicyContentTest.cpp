#include "KRLException.h"
#include "host/content/FileContent.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace {

/// A catalogue of one model with a policy.
class PolicyContent : public testing::Test {
protected:
    PolicyContent() {
        std::string pattern = testing::TempDir() + "contentXXXXXX";
        m_folder = ::mkdtemp(pattern.data());
        write("m.xml", "<model><namespace id='n' name='N'/></model>");
    }
    ~PolicyContent() override { std::filesystem::remove_all(m_folder); }

    void write(char const* file, std::string const& text) const {
        std::ofstream(m_folder + '/' + file) << text;
    }
    std::shared_ptr<vex::ModelVersion const> load(std::string const& policy) const {
        write("p.yaml", policy);
        vex::FileContent content(vex::loadCatalogueText(
            "<catalog><model path='/content/m' file='m.xml' policy='p.yaml'/></catalog>", "c.xml",
            m_folder));
        return content.getModel("/content/m");
    }

    std::string m_folder;
};

TEST_F(PolicyContent, HasTheViewsOfTheRules) {
    auto const version = load("views: {v: {include: '[N]'}}");
    EXPECT_TRUE(version->model()->findById("v").IsNotNull());
    EXPECT_EQ(version->model()->elementCount(), 6U); // model, n, securityViews, view, set, item
}

TEST_F(PolicyContent, IsAnotherVersionUnderAnotherPolicy) {
    std::string const stamp = load("views: {v: {include: '[N]'}}")->stamp();
    EXPECT_EQ(load("views: {v: {include: '[N]'}}")->stamp(), stamp);
    EXPECT_NE(load("views: {v: {include: '**'}}")->stamp(), stamp);
}

TEST_F(PolicyContent, IsNotLoadedWhenAViewHasAnIdOfTheModel) {
    try {
        load("views:\n  n: {include: '**'}");
        FAIL() << "it was loaded";
    } catch (KRLDocumentException const& problem) {
        EXPECT_EQ(problem.what(), m_folder +
                                      "/p.yaml:2:3: the model has the id \"n\" already; give "
                                      "the view another one");
    }
}

} // namespace
