// More findings than are kept.

#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// Five query items that only a shortcut shows to two users alike.
class ManyFindings : public testing::Test {
protected:
    ManyFindings() {
        std::string items;
        for (int number = 0; number < 5; ++number) {
            items += "<queryItem id=\"i" + std::to_string(number) + "\" name=\"I\"/>";
        }
        m_folder.Write("m.model.xml",
                       R"(<model defaultLocale="en"><namespace id="n" name="N">
            <querySubject id="q" name="Q">)" +
                           items +
                           R"(</querySubject><shortcut id="s" name="S" refobj="[N].[Q]"/>
            </namespace><securityViews><securityView id="v"><set kind="included"><item>n</item>
            <item>q</item><item>s</item></set></securityView></securityViews></model>)");
        m_folder.Write("m.catalog.xml", R"(<catalog>
            <model path="/content/m" file="m.model.xml"><grant role="r" view="v"/></model>
            <user name="a"><role>r</role></user><user name="b"><role>r</role></user></catalog>)");
    }

    ToolResult verify(std::vector<std::string> const& more) const {
        std::vector<std::string> arguments{"verify", "--catalog", "m.catalog.xml", "--model",
                                           "/content/m"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return m_folder.Run(arguments);
    }

    ToolFolder m_folder;
};

TEST_F(ManyFindings, AreCountedPastTheLimitAndNeverClean) {
    ToolResult const text = verify({"--max-findings", "2"});
    EXPECT_EQ(text.status, 4);
    EXPECT_THAT(text.out, HasSubstr("0 leaks, 5 shown past the views"));
    EXPECT_THAT(text.out, HasSubstr("\n  shown past the views: 3 more past the limit; "
                                    "--max-findings raises it\n"));
    EXPECT_EQ(text.error, "vexma: 3 findings past the limit counted, not listed, 0 of them "
                          "accepted: of a kind there is room for 2; raise it with "
                          "--max-findings\n");
    json const told = json::parse(verify({"--max-findings", "2", "--json"}).out);
    EXPECT_EQ(told.at("clean"), false);
    EXPECT_EQ(told.at("counts").at("shown-past-views"), 5);
    EXPECT_EQ(told.at("users")[0].at("differences").size(), 2U);
    EXPECT_EQ(told.at("users")[0].at("notListed"),
              json({{"shown-past-views", 3}, {"accepted", 0}}));
    json const log = json::parse(verify({"--max-findings", "2", "--format", "sarif"}).out);
    json const& results = log.at("runs")[0].at("results");
    ASSERT_EQ(results.size(), 3U);
    EXPECT_EQ(results[2].at("ruleId"), "shown-past-views");
    EXPECT_EQ(results[2].at("message").at("text"),
              "a: 3 more past the limit; --max-findings raises it");
    EXPECT_THAT(verify({"--max-findings", "2", "--format", "junit"}).out,
                HasSubstr("3 more past the limit; --max-findings raises it\n</failure>"));
}

TEST_F(ManyFindings, AreListedWhereThereIsRoom) {
    ToolResult const result = verify({"--json"});
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_THAT(result.out, Not(HasSubstr("notListed")));
    EXPECT_EQ(json::parse(result.out).at("users")[0].at("differences").size(), 5U);
}

TEST_F(ManyFindings, AreAcceptedPastTheLimitToo) {
    m_folder.Write("known.jsonl", R"({"kind": "shown-past-views", "cause": "behind-shortcut"})");
    ToolResult const result = verify({"--max-findings", "2", "--accept", "known.jsonl", "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("3 findings past the limit counted, not listed, 3 of them "
                                        "accepted"));
    json const told = json::parse(result.out);
    EXPECT_EQ(told.at("clean"), true);
    EXPECT_EQ(told.at("counts").at("accepted"), 5);
    m_folder.Write("known.jsonl", R"({"object": "i4"})"); // the last, past the limit
    ToolResult const one = verify({"--max-findings", "2", "--accept", "known.jsonl"});
    EXPECT_EQ(one.status, 4);
    EXPECT_THAT(one.error, Not(HasSubstr("no longer found")));
}

TEST_F(ManyFindings, AreInNoBaselinePastTheLimitAndSoNotAccepted) {
    ToolResult const written = verify({"--max-findings", "2", "--write-baseline", "known.jsonl"});
    EXPECT_EQ(written.status, 4);
    EXPECT_THAT(written.error, HasSubstr("4 entries written to known.jsonl"));
    EXPECT_THAT(written.error, HasSubstr("3 findings past the limit in no entry of known.jsonl, "
                                         "and not accepted by it"));
    EXPECT_EQ(verify({"--max-findings", "2", "--accept", "known.jsonl"}).status, 4);
    EXPECT_EQ(verify({"--accept", "known.jsonl", "--write-baseline", "all.jsonl"}).status, 0);
    ToolResult const all = verify({"--max-findings", "2", "--accept", "all.jsonl"});
    EXPECT_EQ(all.status, 0);
    EXPECT_THAT(all.error, Not(HasSubstr("no longer found")));
}

} // namespace
