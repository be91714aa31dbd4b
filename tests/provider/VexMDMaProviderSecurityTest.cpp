#include "provider/VexMDMaProvider.h"
#include "tests/support/ExpectFailure.h"
#include "tests/support/TestDocument.h"
#include "tests/support/TestSession.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned withoutSource = 1444335572;
constexpr unsigned withoutViews = 1170699671;

class VexMDMaProviderSecurityTest : public testing::Test {
protected:
    void expectRefusal(unsigned id) {
        expectFailure([&] { m_provider.RetrieveSecurityInfo(); }, id, "VexMDMaProvider", 0,
                      "VexMDMaProvider::RetrieveSecurityInfo");
    }
    int count(Call call) const { return m_model.calls().count(call); }

    TestModel m_model{"<model id=\"m\"><namespace id=\"n\" name=\"N\"/></model>"};
    TestSession m_session{m_model};
    VexMDMaProvider m_provider{m_session, "/content/m"};
};

} // namespace

TEST_F(VexMDMaProviderSecurityTest, ViewsAndRolesAreAskedForOnce) {
    m_session.setViews({"v"});
    m_provider.RetrieveSecurityInfo();
    m_provider.RetrieveSecurityInfo();
    EXPECT_EQ(count(Call::GetModelService), 1);
    EXPECT_EQ(count(Call::GetSecurityInfoSource), 1);
    EXPECT_EQ(count(Call::GetAvailableViews), 1);
    EXPECT_EQ(count(Call::GetRoles), 1);
    EXPECT_EQ(m_session.askedPaths(), std::vector<I18NString>{"/content/m"});
}

TEST_F(VexMDMaProviderSecurityTest, LaterRequestsDoNotAskAgain) {
    m_session.setViews({"v"});
    for (int request = 0; request < 2; ++request) {
        TestRequest function("<Functions a=\"1\"><Metadata/></Functions>");
        TestResponse response;
        m_provider.doRequest(function.node(), response.node());
    }
    EXPECT_EQ(count(Call::GetAvailableViews), 1);
}

TEST_F(VexMDMaProviderSecurityTest, AnUnknownPathIsRefusedUntilTheHostKnowsIt) {
    m_session.setViews({"v"});
    m_session.dropSource();
    expectRefusal(withoutSource);
    expectRefusal(withoutSource);
    m_session.restoreSource();
    m_provider.RetrieveSecurityInfo();
    EXPECT_EQ(m_session.askedPaths().size(), 3U);
}

TEST_F(VexMDMaProviderSecurityTest, AHostWithoutSecurityInformationIsRefused) {
    m_session.dropModelService();
    expectRefusal(withoutSource);
}

TEST_F(VexMDMaProviderSecurityTest, AUserWithoutViewsIsRefusedBeforeTheRolesAreAskedFor) {
    expectRefusal(withoutViews);
    EXPECT_EQ(count(Call::GetRoles), 0);
    m_session.setViews({"v"});
    m_provider.RetrieveSecurityInfo();
    EXPECT_EQ(count(Call::GetAvailableViews), 2);
}

// covers quirk: metadata-accepts-no-roles
TEST_F(VexMDMaProviderSecurityTest, AUserWithoutRolesIsAccepted) {
    m_session.setViews({"v"});
    m_session.setRoles({});
    m_provider.RetrieveSecurityInfo();
    EXPECT_EQ(count(Call::GetRoles), 1);
}

TEST_F(VexMDMaProviderSecurityTest, ViewsThatAreGoneAfterTheRolesWereReadAreRefused) {
    m_session.setViews({"v"});
    m_session.setRoles({"clerk"});
    m_session.withdrawViewsWithRoles();
    expectRefusal(withoutViews);
    EXPECT_EQ(count(Call::GetRoles), 1);
    expectRefusal(withoutViews);
    EXPECT_EQ(count(Call::GetRoles), 2);
}

TEST_F(VexMDMaProviderSecurityTest, AHostThatRaisesIsAskedAgain) {
    m_session.setViews({"v"});
    for (Call const call : {Call::GetModelService, Call::GetSecurityInfoSource,
                            Call::GetAvailableViews, Call::GetRoles}) {
        m_model.calls().failAt(call, 1);
        expectInjectedFailure([&] { m_provider.RetrieveSecurityInfo(); });
    }
    m_provider.RetrieveSecurityInfo();
    EXPECT_EQ(count(Call::GetRoles), 2);
}

TEST_F(VexMDMaProviderSecurityTest, NineClassesAreSecured) {
    std::set<I18NString> const expected{"namespace", "folder",          "querySubject",
                                        "queryItem", "queryItemFolder", "calculation",
                                        "filter",    "function",        "shortcut"};
    EXPECT_EQ(VexMDMaProvider::GetSecuredObjectsSet(), expected);
    for (I18NString const& name : expected) {
        EXPECT_TRUE(m_provider.IsObjectSecured(name)) << name.c_str();
    }
    for (char const* const name : {"", "Namespace", "package", "relationship", "securityView"}) {
        EXPECT_FALSE(m_provider.IsObjectSecured(name)) << name;
    }
}

TEST_F(VexMDMaProviderSecurityTest, TheSecuredClassesAreOneSetForTheProcess) {
    EXPECT_EQ(&VexMDMaProvider::GetSecuredObjectsSet(), &VexMDMaProvider::GetSecuredObjectsSet());
}

TEST_F(VexMDMaProviderSecurityTest, TheSecuredClassesAreThereAgainAfterSomebodyEmptiedThem) {
    std::set<I18NString> const before = VexMDMaProvider::GetSecuredObjectsSet();
    VexMDMaProvider::GetSecuredObjectsSet().clear();
    EXPECT_TRUE(m_provider.IsObjectSecured("folder"));
    EXPECT_EQ(VexMDMaProvider::GetSecuredObjectsSet(), before);
}
