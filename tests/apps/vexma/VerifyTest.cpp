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
    EXPECT_EQ(
        result.out,
        R"(ann: 628 objects compared: 1 leak, 0 shown past the views, 0 unexplained differences; 0 join keys, 0 hidden containers, 0 required
  leak: the filter "Profitable Lines" (fl.profitable) names [Sales].[Order Lines].[Unit Cost] in its expression, and the queryItem "Unit Cost" (qi.orderLines.unitCost) is hidden
compared for 1 of 1 user: 1 leak, 0 shown past the views, 0 unexplained differences; 0 join keys, 0 hidden containers, 0 required
)");
}

TEST(Verify, FindsNothingThatLeaksToCarl) {
    ToolResult const result = runOnSample("verify", "carl");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(
        result.out,
        HasSubstr("compared for 1 of 1 user: 0 leaks, 0 shown past the views, 0 "
                  "unexplained differences; 0 join keys, 7 hidden containers, 0 required\n"));
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
}

TEST_F(RequiredDifferences, ThatShowMoreThanTheViewsAreCountedApart) {
    EXPECT_THAT(
        verify().out,
        HasSubstr("carl: 20 objects compared: 1 leak, 3 shown past the views, 0 "
                  "unexplained differences; 0 join keys, 0 hidden containers, 5 required\n"));
}

TEST_F(RequiredDifferences, ThatShowMoreThanTheViewsHaveAStatusOfTheirOwn) {
    m_folder.Write("known.jsonl", R"({"kind": "leak", "object": "short"})");
    ToolResult const result = verify({"--accept", "known.jsonl"});
    EXPECT_EQ(result.status, 4);
    EXPECT_THAT(
        result.out,
        HasSubstr("carl: 20 objects compared: 0 leaks, 3 shown past the views, 0 "
                  "unexplained differences; 0 join keys, 0 hidden containers, 5 required; 1 "
                  "accepted\n"));
}

TEST_F(RequiredDifferences, AreAcceptedByABaselineThatVerifyWrites) {
    ToolResult const written = verify({"--write-baseline", "known.jsonl"});
    EXPECT_EQ(written.status, 0);
    EXPECT_THAT(written.error, HasSubstr("vexma: 4 entries written to known.jsonl"));
    ToolResult const accepted = verify({"--accept", "known.jsonl"});
    EXPECT_EQ(accepted.status, 0);
    EXPECT_THAT(accepted.error, IsEmpty());
    EXPECT_THAT(accepted.out, HasSubstr("; 4 accepted\n"));
}

TEST_F(RequiredDifferences, ThatAreAcceptedInVainAreNamed) {
    m_folder.Write("known.jsonl", R"({"kind": "leak", "object": "gone"})");
    ToolResult const result = verify({"--accept", "known.jsonl"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("vexma: accepted, but no longer found: "
                                        "{\"kind\":\"leak\",\"object\":\"gone\"}"));
}

TEST_F(RequiredDifferences, CannotBeAcceptedByAFileThatCannotBeRead) {
    m_folder.Write("known.jsonl", "leak\n");
    ToolResult const result = verify({"--accept", "known.jsonl"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("known.jsonl:1: this is no JSON"));
    EXPECT_EQ(verify({"--accept", "missing.jsonl"}).status, 3);
    EXPECT_EQ(verify({"--write-baseline", "missing/known.jsonl"}).status, 1);
}

TEST_F(RequiredDifferences, AreWrittenForOtherProgramsToo) {
    json const log = json::parse(verify({"--format", "sarif"}).out);
    json const& first = log.at("runs")[0].at("results")[0];
    EXPECT_EQ(first.at("ruleId"), "leak");
    EXPECT_EQ(first.at("locations")[0].at("physicalLocation").at("region").at("startLine"), 6);
    ToolResult const junit = verify({"--format", "junit"});
    EXPECT_EQ(junit.status, 1);
    EXPECT_THAT(junit.out, HasSubstr("<testsuite name=\"carl\" tests=\"6\" failures=\"2\""));
    EXPECT_EQ(verify({"--format", "yaml"}).status, 2);
}

/// Ann may see an item, and nothing of what it stands in but the namespace.
class HiddenContainers : public testing::Test {
protected:
    HiddenContainers() {
        m_folder.Write("m.model.xml", R"(<model defaultLocale="en">
          <namespace id="n" name="N"><folder id="f" name="Secret Plans">
            <querySubject id="q" name="Takeover"><queryItem id="i" name="Amount"/>
              <queryItem id="j" name="Date"/></querySubject></folder></namespace>
          <securityViews><securityView id="v"><set kind="included"><item>n</item><item>i</item>
          <item>j</item></set></securityView></securityViews></model>)");
        m_folder.Write("m.catalog.xml", casts::catalogue({"v"}));
    }

    ToolResult run(std::string const& command, std::vector<std::string> const& more = {}) const {
        std::vector<std::string> arguments{command, "--catalog", "m.catalog.xml", "--model",
                                           "/content/m"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return m_folder.Run(arguments);
    }

    ToolFolder m_folder;
};

TEST_F(HiddenContainers, AreNamedByThePathsOfWhatIsShown) {
    EXPECT_THAT(
        run("metadata", {"--user", "carl", "--property", "name", "--property", "_path"}).out,
        HasSubstr("_path=\"[N].[Secret Plans].[Takeover].[Amount]\""));
}

TEST_F(HiddenContainers, AreCountedApartAndAreNoLeak) {
    ToolResult const text = run("verify");
    EXPECT_EQ(text.status, 0);
    EXPECT_THAT(text.out, HasSubstr("0 leaks, 0 shown past the views, 0 unexplained differences; "
                                    "0 join keys, 2 hidden containers, 0 required\n"));
    EXPECT_THAT(text.out,
                HasSubstr("  hidden container: the folder \"Secret Plans\" (f) is hidden, and the "
                          "_path of 2 objects shown in it names it, such as the queryItem "
                          "\"Amount\" (i)\n"));
    json const report = json::parse(run("verify", {"--json"}).out);
    EXPECT_EQ(report.at("clean"), true);
    EXPECT_EQ(report.at("counts").at("hidden-container"), 2);
    EXPECT_EQ(report.at("users")[0].at("hiddenContainers")[1].at("object").at("id"), "q");
    json const log = json::parse(run("verify", {"--format", "sarif"}).out);
    EXPECT_EQ(log.at("runs")[0].at("results").size(), 2U);
    EXPECT_THAT(run("verify", {"--format", "junit"}).out,
                HasSubstr("<property name=\"hidden-container\" value=\"2\"/>"));
}

TEST(VerifiedUsers, WithTheSameRolesAreVerifiedOnceAndFindingsAreCapped) {
    ToolFolder const folder;
    std::string items;
    for (int number = 0; number < 30; ++number) {
        items += "<queryItem id=\"i" + std::to_string(number) + "\" name=\"I\"/>";
    }
    folder.Write("m.model.xml",
                 R"(<model defaultLocale="en"><namespace id="n" name="N">
        <querySubject id="q" name="Q">)" +
                     items +
                     R"(</querySubject>
        <shortcut id="s" name="S" refobj="[N].[Q]"/></namespace>
        <securityViews><securityView id="v"><set kind="included"><item>n</item><item>q</item>
        <item>s</item></set></securityView></securityViews></model>)");
    folder.Write("m.catalog.xml", R"(<catalog>
        <model path="/content/m" file="m.model.xml"><grant role="r" view="v"/></model>
        <user name="a"><role>r</role></user><user name="b"><role>r</role></user></catalog>)");
    std::vector<std::string> command{"verify", "--catalog", "m.catalog.xml", "--model",
                                     "/content/m"};
    std::string const out = folder.Run(command).out;
    EXPECT_THAT(out, HasSubstr("a, b: 40 objects compared: 0 leaks, 30 shown past the views"));
    EXPECT_THAT(out, HasSubstr("  shown past the views: 20 more (behind-shortcut); --all shows "
                               "them\n"));
    EXPECT_THAT(out, HasSubstr("compared for 2 of 2 users: 0 leaks, 30 shown past the views"));
    command.emplace_back("--all");
    EXPECT_THAT(folder.Run(command).out, testing::Not(HasSubstr("more")));
}

TEST(VerifiedUsers, OfWhomOneIsNamedLeaveTheBaselineOfTheOthers) {
    ToolFolder const folder;
    folder.Write("m.model.xml", R"(<model defaultLocale="en"><namespace id="n" name="N">
        <querySubject id="q" name="Q"/><shortcut id="s" name="S" refobj="[N].[Q]"/></namespace>
        <securityViews><securityView id="v"><set kind="included"><item>n</item></set>
        </securityView><securityView id="w"><set kind="included"><item>n</item><item>n</item></set>
        </securityView></securityViews></model>)");
    folder.Write("m.catalog.xml", R"(<catalog>
        <model path="/content/m" file="m.model.xml"><grant role="r" view="v"/>
        <grant role="s" view="w"/></model>
        <user name="ann"><role>r</role></user><user name="ben"><role>s</role></user></catalog>)");
    std::vector<std::string> const verify{"verify", "--catalog", "m.catalog.xml", "--model",
                                          "/content/m"};
    auto const run = [&](std::vector<std::string> const& more) {
        std::vector<std::string> arguments = verify;
        arguments.insert(arguments.end(), more.begin(), more.end());
        return folder.Run(arguments);
    };
    EXPECT_EQ(run({"--write-baseline", "known.jsonl"}).status, 0);
    EXPECT_EQ(run({"--accept", "known.jsonl"}).status, 0);
    ToolResult const one =
        run({"--user", "ann", "--accept", "known.jsonl", "--write-baseline", "known.jsonl"});
    EXPECT_EQ(one.status, 0);
    EXPECT_THAT(one.error, testing::Not(HasSubstr("no longer found")));
    ToolResult const all = run({"--accept", "known.jsonl"});
    EXPECT_EQ(all.status, 0) << all.out;
    EXPECT_THAT(all.error, IsEmpty());
}

TEST(VerifiedPaths, UnderWhichNobodyIsRestrictedAreSaidAloud) {
    ToolFolder const folder;
    folder.Write("typo.catalog.xml", R"(<catalog>
        <model path="/conten/small" file="small.model.xml"><grant role="clerk" view="v1"/></model>
        <user name="ann"><role>clerk</role></user></catalog>)");
    ToolResult const result =
        folder.Run({"verify", "--catalog", "typo.catalog.xml", "--model", "/conten/small"});
    EXPECT_EQ(result.status, 6);
    EXPECT_THAT(result.error, HasSubstr("vexma: nobody is restricted under the model path "
                                        "\"/conten/small\"; begin it with /content/"));
    EXPECT_THAT(result.out, HasSubstr("NOTHING IS VERIFIED: nobody is restricted"));
    EXPECT_THAT(result.out, testing::Not(HasSubstr("0 leaks")));
}

TEST(VerifiedUsers, WhoAreAllRefusedLeaveNothingVerified) {
    ToolResult const result = runOnSample("verify", "nora");
    EXPECT_EQ(result.status, 6);
    EXPECT_THAT(result.out, HasSubstr("nora: not compared, every request is refused: "));
    EXPECT_THAT(result.out, HasSubstr("NOTHING IS VERIFIED: every request is refused"));
    EXPECT_THAT(result.out, testing::Not(HasSubstr("0 leaks")));
}

// No tree can be asked for there.
TEST(VerifiedUsers, WhoAreRefusedOnAModelWithoutNamespacesAreRefusedByBoth) {
    ToolFolder const folder;
    folder.Write("m.model.xml", R"(<model defaultLocale="en"><package id="p" name="P"/>
        <securityViews><securityView id="v"><set kind="included"><item>p</item></set>
        </securityView></securityViews></model>)");
    folder.Write("m.catalog.xml", R"(<catalog>
        <model path="/content/m" file="m.model.xml"><grant role="r" view="v"/></model>
        <user name="ann"><role>r</role></user><user name="nora"/></catalog>)");
    std::vector<std::string> const verify{"verify", "--catalog", "m.catalog.xml", "--model",
                                          "/content/m"};
    ToolResult const all = folder.Run(verify);
    EXPECT_EQ(all.status, 0) << all.out;
    EXPECT_THAT(all.out, HasSubstr("nora: not compared, every request is refused: "));
    EXPECT_THAT(all.out, HasSubstr("ann: 6 objects compared: 0 leaks, "));
    EXPECT_THAT(all.out, HasSubstr("compared for 1 of 2 users: 0 leaks, "));
    std::vector<std::string> alone = verify;
    alone.insert(alone.end(), {"--user", "nora"});
    EXPECT_EQ(folder.Run(alone).status, 6);
}

TEST(Verify, OfAModelFileAloneSaysThatNobodyIsRestricted) {
    ToolFolder const folder;
    ToolResult const result = folder.Run({"verify", "small.model.xml"});
    EXPECT_EQ(result.status, 6);
    EXPECT_THAT(result.error, HasSubstr("vexma: nobody is restricted: a model file alone has no "
                                        "users"));
    EXPECT_THAT(result.out, testing::Not(HasSubstr("0 leaks")));
    folder.Write("known.jsonl", R"({"kind": "unrestricted"})");
    EXPECT_EQ(folder.Run({"verify", "small.model.xml", "--accept", "known.jsonl"}).status, 0);
    json const told = json::parse(
        folder.Run({"verify", "small.model.xml", "--accept", "known.jsonl", "--json"}).out);
    EXPECT_EQ(told.at("clean"), false); // accepted, and still nothing that was verified
}

TEST(Verify, NeedsAKnownUserAndAModel) {
    EXPECT_EQ(runOnSample("verify", "nobody").status, 3);
    EXPECT_EQ(ToolFolder().Run({"verify", "--catalog", "small.catalog.xml"}).status, 2);
    EXPECT_EQ(ToolFolder().Run({"verify"}).status, 2);
}

} // namespace
