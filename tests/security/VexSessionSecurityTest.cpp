// The security information of a session, as the two actions demand it.

#include "security/VexSessionSecurity.h"

#include "tests/support/ExpectFailure.h"
#include "tests/support/TestModel.h"
#include "tests/support/TestSession.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned withoutSource = 1444335572;
constexpr unsigned withoutViewsOrRoles = 1170699671;

// An action's rules and what its failures record.
struct Case {
    char const* name;
    VexSecurityRules const& rules;
    char const* source;
    char const* function;
};

class SessionSecurity : public testing::TestWithParam<Case> {
protected:
    SessionSecurity() { security.setModelPath("/content/m"); }

    void expectRefused(unsigned id) {
        expectFailure([&] { security.retrieve(); }, id, GetParam().source, 0, GetParam().function);
    }
    int count(Call call) const { return model.calls().count(call); }

    TestModel model{"<model id='m'/>"};
    TestSession session{model};
    VexSessionSecurity security{session, GetParam().rules};
};

TEST_P(SessionSecurity, IsReadOnceUntilItIsForgotten) {
    session.setViews({"v"});
    session.setRoles({"clerk"});
    security.retrieve();
    security.retrieve();
    EXPECT_EQ(count(Call::GetAvailableViews), 1);
    EXPECT_EQ(count(Call::GetRoles), 1);
    EXPECT_EQ(security.availableViews(), std::vector<I18NString>{"v"});
    security.forget();
    security.retrieve();
    EXPECT_EQ(count(Call::GetRoles), 2);
}

TEST_P(SessionSecurity, NeedsASourceAndViewsAndIsAskedForAgainAfterAFailure) {
    session.dropSource();
    expectRefused(withoutSource);
    session.restoreSource();
    expectRefused(withoutViewsOrRoles);
    EXPECT_EQ(count(Call::GetRoles), 0);
    session.setViews({"v"});
    session.setRoles({"clerk"});
    security.retrieve();
    EXPECT_EQ(session.askedPaths().size(), 3U);
}

TEST_P(SessionSecurity, TellsWhenThePathIsAnotherThanBefore) {
    EXPECT_FALSE(security.setModelPath("/content/m"));
    EXPECT_TRUE(security.setModelPath("/content/other"));
    EXPECT_EQ(security.modelPath(), "/content/other");
}

// covers quirk: outside-content-for-good
TEST_P(SessionSecurity, IsLiftedForGoodByOnePathOutsideTheContent) {
    EXPECT_FALSE(security.isOutsideContent());
    security.setModelPath("elsewhere");
    EXPECT_TRUE(security.isOutsideContent());
    security.setModelPath("/content/m");
    EXPECT_TRUE(security.isOutsideContent());
    EXPECT_TRUE(security.makeEngine({}, I18NLocale("en")).IsIncluded("any", false));
}

INSTANTIATE_TEST_SUITE_P(Rules, SessionSecurity,
                         testing::Values(Case{"Metadata", MetadataSecurityRules, "VexMDMaProvider",
                                              "VexMDMaProvider::RetrieveSecurityInfo"},
                                         Case{"Access", AccessSecurityRules, "VexAccessAction",
                                              "VexAccessAction::RetrieveSecurityInfo"}),
                         [](auto const& row) { return std::string(row.param.name); });

// covers quirk: metadata-accepts-no-roles
// covers quirk: access-refuses-without-roles
TEST(SessionSecurityRules, DifferInWhatTheyTestLast) {
    TestModel model("<model id='m'/>");
    TestSession session(model);
    session.setViews({"v"});
    VexSessionSecurity metadata(session, MetadataSecurityRules);
    metadata.retrieve();
    VexSessionSecurity access(session, AccessSecurityRules);
    expectFailure([&] { access.retrieve(); }, withoutViewsOrRoles, "VexAccessAction", 0,
                  "VexAccessAction::RetrieveSecurityInfo");

    session.setRoles({"clerk"});
    session.withdrawViewsWithRoles();
    access.retrieve();
    metadata.forget();
    expectFailure([&] { metadata.retrieve(); }, withoutViewsOrRoles, "VexMDMaProvider", 0,
                  "VexMDMaProvider::RetrieveSecurityInfo");
}

} // namespace
