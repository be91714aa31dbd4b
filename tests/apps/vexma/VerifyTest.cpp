#include "tests/apps/vexma/SampleRun.h"
#include "tests/support/Casts.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Verify, FindsTheOneLeakThatAnnSees) {
    ToolResult const result = runOnSample("verify", "ann");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_EQ(result.out,
              R"(ann: 628 objects compared, 0 unexplained differences, 0 required, 1 leak
  leak: the filter "Profitable Lines" (fl.profitable) names [Sales].[Order Lines].[Unit Cost] in its expression, and the queryItem "Unit Cost" (qi.orderLines.unitCost) is hidden
1 leak, 0 unexplained differences
)");
}

TEST(Verify, FindsNothingThatLeaksToCarl) {
    ToolResult const result = runOnSample("verify", "carl");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("0 leaks, 0 unexplained differences\n"));
}

TEST(Verify, VerifiesForEveryUserOfTheCatalogue) {
    ToolResult const result = runOnSample("verify", "", {"--json"});
    EXPECT_EQ(result.status, 1);
    json const report = json::parse(result.out);
    EXPECT_EQ(report.at("clean"), false);
    json const& users = report.at("users");
    ASSERT_EQ(users.size(), 4U);
    std::vector<std::string> names;
    for (json const& user : users) {
        names.push_back(user.at("user"));
    }
    EXPECT_EQ(names, (std::vector<std::string>{"admin", "ann", "carl", "nora"}));
    EXPECT_EQ(users[1].at("leaks").size(), 1U);
    EXPECT_EQ(users[1].at("leaks")[0].at("object").at("id"), "fl.profitable");
    EXPECT_EQ(users[1].at("leaks")[0].at("named").at("id"), "qi.orderLines.unitCost");
    EXPECT_EQ(users[3].at("refused"), "both");
}

TEST(Verify, IsSilentAboutProgressWhenNobodyWatches) {
    EXPECT_THAT(runOnSample("verify", "carl").error, IsEmpty());
}

/// A model in which every difference that is required occurs once.
class RequiredDifferences : public testing::Test {
protected:
    RequiredDifferences() {
        m_folder.Write("m.model.xml", R"(<model defaultLocale="en">
          <namespace id="start" name="Start">
            <querySubject id="seen" name="Seen"/>
            <querySubject id="hidden" name="Hidden"><queryItem id="item" name="Item"/></querySubject>
            <folder id="nameless"><filter id="lost" name="Lost"/></folder>
            <shortcut id="short" name="Short" refobj="[Start].[Hidden]"/>
            <shortcut id="empty" name="Empty"/>
          </namespace>
          <namespace id="second" name="Start"/>
          <outside id="outside"/>
          <securityViews><securityView id="v"><set kind="included">
            <item>seen</item><item>nameless</item><item>lost</item><item>empty</item>
            <item>second</item><item>outside</item>
          </set></securityView></securityViews></model>)");
        m_folder.Write("m.catalog.xml", casts::catalogue({"v"}));
    }

    ToolResult verify(std::vector<std::string> more = {}) const {
        more.insert(more.begin(),
                    {"verify", "--catalog", "m.catalog.xml", "--model", "/content/m"});
        return m_folder.Run(more);
    }

    ToolFolder m_folder;
};

TEST_F(RequiredDifferences, AreCountedApartAndTellTheirCause) {
    json const user = json::parse(verify({"--json"}).out).at("users").at(0);
    std::vector<std::pair<std::string, std::string>> causes;
    for (json const& difference : user.at("differences")) {
        causes.emplace_back(difference.at("object").at("id"), difference.at("cause"));
        EXPECT_EQ(difference.at("required"), true);
    }
    EXPECT_EQ(causes, (std::vector<std::pair<std::string, std::string>>{
                          {"start", "start"},
                          {"item", "behind-shortcut"},
                          {"nameless", "without-name"},
                          {"lost", "container-unnamed"},
                          {"short", "shortcut-untested"},
                          {"empty", "nothing-to-stand-for"},
                          {"second", "no-tree-starts"},
                          {"outside", "outside-namespaces"}}));
}

TEST_F(RequiredDifferences, DoNotHideThatTheTargetOfAShortcutLeaks) {
    ToolResult const result = verify();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("leak: the shortcut \"Short\" (short) names "
                                      "[Start].[Hidden] in its refobj, and the querySubject "
                                      "\"Hidden\" (hidden) is hidden"));
    EXPECT_THAT(result.out, HasSubstr("carl: 20 objects compared, 0 unexplained differences, 8 "
                                      "required, 1 leak\n"));
}

TEST(Verify, OfAModelFileAloneFindsNoLeaks) {
    ToolResult const result = ToolFolder().Run({"verify", "small.model.xml"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("0 leaks"));
}

TEST(Verify, NeedsAKnownUserAndAModel) {
    EXPECT_EQ(runOnSample("verify", "nobody").status, 3);
    EXPECT_EQ(ToolFolder().Run({"verify", "--catalog", "small.catalog.xml"}).status, 2);
    EXPECT_EQ(ToolFolder().Run({"verify"}).status, 2);
}

} // namespace
