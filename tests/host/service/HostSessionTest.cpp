#include "host/service/HostSession.h"

#include "VexObject.h"
#include "host/store/image/HostException.h"
#include "tests/host/service/SmallModel.h"

#include <gmock/gmock.h>

namespace {

using vex::HostSession;

std::string sessionLocale(char const* asked) {
    HostSession const session(smallModel(), I18NLocale(asked), nullptr, nullptr);
    return session.GetCurrentLocale()->getName().toUtf8();
}

/// A session of ann, who is clerk and boss.
class CatalogueSession : public testing::Test {
protected:
    CatalogueSession() {
        vex::Diagnostics found;
        m_catalogue = vex::readCatalogueText(
            R"(<catalog>
              <model path="/content/a" file="a.xml">
                <package value="A"><property name="tip" locale="de">Tipp</property></package>
                <grant role="clerk" view="v2"/><grant role="boss" view="v1"/>
              </model>
              <model path="/content/b" file="b.xml"/>
              <user name="ann"><role>clerk</role><role>boss</role></user>
            </catalog>)",
            "c.xml", "", found);
        m_session = std::make_unique<HostSession>(smallModel(), I18NLocale(), m_catalogue,
                                                  m_catalogue->findUser("ann"));
    }

    VexSecurityInfoSource* Source(char const* path) {
        return m_session->GetModelService()->GetSecurityInfoSource(path);
    }

    std::shared_ptr<vex::Catalogue const> m_catalogue;
    std::unique_ptr<HostSession> m_session;
};

TEST(HostSession, UsesTheLocaleAskedForWhenTheModelListsIt) {
    EXPECT_EQ(sessionLocale("de"), "de");
}

TEST(HostSession, UsesTheLocaleAskedForWhenTheModelListsAParentOfIt) {
    EXPECT_EQ(sessionLocale("de-at"), "de_AT");
}

TEST(HostSession, UsesTheModelsDefaultLocaleForAnyOther) {
    EXPECT_EQ(sessionLocale("fr"), "en");
}

TEST(HostSession, UsesTheModelsDefaultLocaleWhenNoneIsAskedFor) {
    EXPECT_EQ(sessionLocale(""), "en");
}

TEST(HostSession, HandsOutOneLocaleForOneName) {
    HostSession const session(smallModel(), I18NLocale(), nullptr, nullptr);
    I18NLocale const* const german = session.GetLocale("de");
    EXPECT_EQ(german->getName(), "de");
    session.GetLocale("fr");
    EXPECT_EQ(session.GetLocale("de"), german);
    EXPECT_EQ(session.GetLocale("")->getName(), "");
}

TEST(HostSession, FindsObjectsByIdAndByReference) {
    HostSession const session(smallModel(), I18NLocale(), nullptr, nullptr);
    VEX_HANDLE const orders = session.findObject("q");
    I18NString id;
    EXPECT_TRUE(VexObject(orders).GetId(id));
    EXPECT_EQ(id, "q");
    EXPECT_TRUE(session.findObject("[Sales].[Orders]") == orders);
}

TEST(HostSession, SaysWhichObjectItDoesNotFind) {
    HostSession const session(smallModel(), I18NLocale(), nullptr, nullptr);
    try {
        session.findObject("[Sales].[None]");
        FAIL() << "nothing was raised";
    } catch (vex::HostException const& problem) {
        EXPECT_THAT(problem.what(), testing::HasSubstr("\"[Sales].[None]\""));
    }
}

TEST(HostSession, HasNoSecurityInformationWithoutACatalogue) {
    HostSession session(smallModel(), I18NLocale(), nullptr, nullptr);
    EXPECT_EQ(session.GetModelService()->GetSecurityInfoSource("/content/a"), nullptr);
}

TEST_F(CatalogueSession, SuggestsNoObjectsWhereUsersAreRestricted) {
    vex::HostSession const open(smallModel(), I18NLocale(), nullptr, nullptr);
    for (vex::HostSession const* const session :
         {&open, static_cast<vex::HostSession const*>(m_session.get())}) {
        try {
            session->findObject("[Sales].[Order]");
            FAIL() << "nothing was raised";
        } catch (vex::HostException const& problem) {
            EXPECT_EQ(std::string(problem.what()).find("Orders") != std::string::npos,
                      session == &open);
        }
    }
}

TEST_F(CatalogueSession, KnowsItsUserWhateverBecomesOfWhoeverMadeHim) {
    auto role = std::make_unique<vex::CatalogueUser>(vex::CatalogueUser{"boss", {"boss"}});
    HostSession session(smallModel(), I18NLocale(), m_catalogue, role.get());
    role->roles = {"clerk"};
    role.reset();
    std::vector<I18NString> roles;
    session.GetModelService()->GetSecurityInfoSource("/content/a")->GetRoles(roles);
    EXPECT_EQ(roles, std::vector<I18NString>{"boss"});
}

TEST_F(CatalogueSession, HasNoSecurityInformationForAPathThatTheCatalogueLacks) {
    EXPECT_EQ(Source("/content/c"), nullptr);
}

TEST_F(CatalogueSession, GivesOneSourceForOnePath) {
    VexSecurityInfoSource* const source = Source("/content/a");
    ASSERT_NE(source, nullptr);
    EXPECT_NE(Source("/content/b"), source);
    EXPECT_EQ(Source("/content/a"), source);
}

TEST_F(CatalogueSession, ReplacesTheListsThatItFills) {
    std::vector<I18NString> views{"old"};
    std::vector<I18NString> roles{"old"};
    Source("/content/a")->GetAvailableViews(views);
    Source("/content/a")->GetRoles(roles);
    EXPECT_THAT(views, testing::ElementsAre("v1", "v2"));
    EXPECT_THAT(roles, testing::ElementsAre("clerk", "boss"));
    Source("/content/b")->GetAvailableViews(views);
    EXPECT_TRUE(views.empty());
}

TEST_F(CatalogueSession, GivesThePackagesValueAndProperties) {
    I18NString value = "old";
    I18NLocale const german("de_AT");
    Source("/content/a")->GetPackageValue("/content/a", value, german);
    EXPECT_EQ(value, "A");
    EXPECT_EQ(Source("/content/a")->GetPackagePropertyValue("/content/a", german, "tip"), "Tipp");
    EXPECT_EQ(Source("/content/a")->GetPackagePropertyValue("/content/a", german, "none"), "");
    Source("/content/b")->GetPackageValue("/content/b", value, german);
    EXPECT_EQ(value, "");
}

} // namespace
