#include "VexAccessExplanation.h"

#include "tests/security/EngineCase.h"
#include "tests/support/ExpectFailure.h"

#include <gtest/gtest.h>

namespace {

// "n" and "o" are the ids of the model's namespaces.
std::string const granted =
    "<securityView id=\"v\"><set kind=\"included\"><item>n</item></set></securityView>";

VexAccessExplanation explain(EngineCase& on, std::initializer_list<char const*> ids,
                             bool skipViewLists = false) {
    VexAccessExplanation explanation;
    on.engine().Explain(on.model().byIds(ids), skipViewLists, explanation);
    return explanation;
}

} // namespace

TEST(VexAccessExplanation, EachObjectHasItsVerdictAndTheRuleInTheOrderAskedFor) {
    EngineCase on(granted, {"v"});
    VexAccessExplanation const given = explain(on, {"o", "n", "o"});
    ASSERT_EQ(given.objects.size(), 3U);
    EXPECT_EQ(given.objects[0].id, "o");
    EXPECT_FALSE(given.objects[0].included);
    EXPECT_EQ(given.objects[0].reason, VexAccessReason::NotInViews);
    EXPECT_EQ(given.objects[1].id, "n");
    EXPECT_TRUE(given.objects[1].included);
    EXPECT_EQ(given.objects[1].reason, VexAccessReason::NoRoleBasedViews);
    EXPECT_FALSE(given.objects[2].included);
}

TEST(VexAccessExplanation, UnrestrictedNoViewIsExplainedAndTheModelsViewsAreNotRead) {
    EngineCase on(granted, {}, {}, true);
    VexAccessExplanation const given = explain(on, {"o"});
    EXPECT_TRUE(given.objects.at(0).included);
    EXPECT_EQ(given.objects[0].reason, VexAccessReason::Unrestricted);
    EXPECT_TRUE(given.views.empty());
    EXPECT_EQ(on.model().calls().count(Call::GetElementsByTagName), 0);
}

TEST(VexAccessExplanation, EveryViewIsNamedWithWhatItIsToTheUser) {
    EngineCase on(granted + R"(
        <securityView id="first" roleBased="true"/>
        <securityView id="held" roleBased="true"><member roleId="clerk"/></securityView>
        <securityView id="other" roleBased="true">
          <member roleId="boss"/><member roleId="clerk"/></securityView>
        <securityView id="last" roleBased="1"/>)",
                  {"v", "held"}, {"clerk"});
    VexAccessExplanation const given = explain(on, {"n"});
    struct Row {
        char const* id;
        char const* firstMemberRole;
        VexViewRole role;
        bool inForce;
    };
    Row const rows[] = {{"v", "", VexViewRole::NotRoleBased, true},
                        {"first", "", VexViewRole::ReplacedDefault, false},
                        {"held", "clerk", VexViewRole::RoleHeld, true},
                        {"other", "boss", VexViewRole::RoleNotHeld, false},
                        {"last", "", VexViewRole::DefaultView, false}};
    ASSERT_EQ(given.views.size(), std::size(rows));
    for (std::size_t index = 0; index < std::size(rows); ++index) {
        EXPECT_EQ(given.views[index].id, rows[index].id);
        EXPECT_EQ(given.views[index].firstMemberRole, rows[index].firstMemberRole);
        EXPECT_EQ(given.views[index].role, rows[index].role) << rows[index].id;
        EXPECT_EQ(given.views[index].inForce, rows[index].inForce) << rows[index].id;
    }
}

TEST(VexAccessExplanation, EveryViewThatNamesAnObjectIsMentionedOnceWithItsKinds) {
    EngineCase on(granted + R"(
        <securityView id="w"><set kind="other"><item>n</item></set></securityView>
        <securityView id="x">
          <set kind="hidden"><item>n</item><item>n</item></set>
          <set kind="excluded"><item>n</item></set></securityView>)",
                  {"v"});
    VexAccessExplanation const given = explain(on, {"n", "o", "n"});
    for (std::size_t const object : {std::size_t{0}, std::size_t{2}}) {
        auto const& mentions = given.objects.at(object).mentions;
        ASSERT_EQ(mentions.size(), 2U);
        EXPECT_EQ(mentions[0].view, 0U);
        EXPECT_TRUE(mentions[0].included);
        EXPECT_FALSE(mentions[0].excluded);
        EXPECT_FALSE(mentions[0].hidden);
        EXPECT_EQ(mentions[1].view, 2U);
        EXPECT_FALSE(mentions[1].included);
        EXPECT_TRUE(mentions[1].excluded);
        EXPECT_TRUE(mentions[1].hidden);
    }
    EXPECT_TRUE(given.objects.at(1).mentions.empty());
}

TEST(VexAccessExplanation, ThePassedOverListsDoNotDecide) {
    EngineCase on(granted, {"v"});
    EXPECT_TRUE(explain(on, {"o"}, true).objects.at(0).included);
}

TEST(VexAccessExplanation, AnEarlierExplanationIsReplaced) {
    EngineCase on(granted, {"v"});
    VexAccessExplanation explanation = explain(on, {"n", "o"});
    on.engine().Explain(on.model().byIds({"o"}), false, explanation);
    EXPECT_EQ(explanation.objects.size(), 1U);
    EXPECT_EQ(explanation.views.size(), 1U);
}

TEST(VexAccessExplanation, ItRaisesWhatADecisionWouldRaise) {
    EngineCase on("", {"v"});
    expectFailure([&] { explain(on, {"n"}); }, 1170839636, "VexMDAccessEngine", 0,
                  "VexMDAccessEngine::populateAccessInfo");
}
