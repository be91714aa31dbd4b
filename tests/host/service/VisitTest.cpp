#include "host/service/Visit.h"

#include "host/content/MemoryContent.h"
#include "host/store/image/HostException.h"
#include "tests/host/service/SmallModel.h"

#include <gtest/gtest.h>

namespace {

class VisitTest : public testing::Test {
protected:
    VisitTest() { m_content.setModel("/content/m", smallModel()); }

    static std::shared_ptr<vex::Catalogue const> catalogue() {
        vex::Diagnostics found;
        return vex::readCatalogueText(R"(<catalog><model path="/content/m" file="m.xml"/>
                                         <user name="ann"/></catalog>)",
                                      "c.xml", ".", found);
    }

    vex::MemoryContent m_content{catalogue()};
};

TEST_F(VisitTest, IsOfAUserOfTheCatalogue) {
    vex::Visit const visit = vex::openVisit(m_content, {"/content/m", "ann", I18NLocale()});
    ASSERT_NE(visit.user, nullptr);
    EXPECT_EQ(visit.user->name, "ann");
    EXPECT_EQ(visit.version, m_content.getModel("/content/m"));
}

TEST_F(VisitTest, KeepsItsVersionWhenTheModelIsReplaced) {
    vex::Visit const visit = vex::openVisit(m_content, {"/content/m", "ann", I18NLocale()});
    auto const model = m_content.getModel("/content/m")->model();
    m_content.setModel("/content/m", smallModel());
    EXPECT_EQ(visit.version->model(), model);
    EXPECT_EQ(vex::openSession(visit)->getModel(), model);
}

TEST_F(VisitTest, AnswersInTheLanguageThatTheModelHas) {
    EXPECT_EQ(vex::openVisit(m_content, {"/content/m", "ann", I18NLocale("de")}).locale,
              I18NLocale("de"));
    EXPECT_EQ(vex::openVisit(m_content, {"/content/m", "ann", I18NLocale("fr")}).locale,
              I18NLocale("en"));
}

TEST_F(VisitTest, NamesTheKnownUsersWhenOneIsUnknown) {
    try {
        vex::openVisit(m_content, {"/content/m", "bob", I18NLocale()});
        FAIL() << "nothing was raised";
    } catch (vex::HostException const& problem) {
        EXPECT_STREQ(problem.what(), "unknown user \"bob\"; the catalogue has \"ann\"");
    }
}

TEST_F(VisitTest, TellsAnUnknownUserBeforeAnUnknownModel) {
    EXPECT_THROW(vex::openVisit(m_content, {"/content/x", "ann", I18NLocale()}),
                 vex::HostException);
    try {
        vex::openVisit(m_content, {"/content/x", "bob", I18NLocale()});
        FAIL() << "nothing was raised";
    } catch (vex::HostException const& problem) {
        EXPECT_EQ(std::string(problem.what()).find("unknown user"), 0U);
    }
}

TEST(VisitWithoutCatalogue, IsOfNobodyWhomAnythingRestricts) {
    vex::MemoryContent content;
    content.setModel("file:m.xml", smallModel());
    vex::Visit const visit = vex::openVisit(content, {"file:m.xml", "", I18NLocale()});
    EXPECT_EQ(visit.catalogue, nullptr);
    EXPECT_EQ(vex::openSession(visit)->GetModelService()->GetSecurityInfoSource("file:m.xml"),
              nullptr);
}

} // namespace
