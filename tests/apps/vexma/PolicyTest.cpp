#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char policy[] = R"(views:
  clerks: {include: "**", except: "[N].[Cost]", spread: true}
roles: {clerk: clerks}
users: {carl: clerk, nora: []}
expect:
)";

/// A model with a policy that expects something.
class PolicyOfAModel : public testing::Test {
protected:
    PolicyOfAModel() {
        m_folder.Write("m.xml", "<model defaultLocale='en'><namespace id='n' name='N'>"
                                "<queryItem id='a' name='Cost'/><queryItem id='b' name='Day'/>"
                                "<calculation id='c' name='Sum' expression='[N].[Cost]'/>"
                                "</namespace></model>");
        m_folder.Write(
            "m.catalog.xml",
            "<catalog><model path='/content/m' file='m.xml' policy='p.yaml'/></catalog>");
    }

    ToolResult test(std::string const& expectations, std::vector<std::string> more = {}) {
        m_folder.Write("p.yaml", policy + expectations);
        more.insert(more.begin(), {"test", "p.yaml"});
        return m_folder.Run(more);
    }

    ToolFolder m_folder;
};

TEST_F(PolicyOfAModel, IsTestedByWhatItExpects) {
    ToolResult const result =
        test("  - {user: carl, sees: '[N].[Day]', not: ['#a', 'calculation:']}\n"
             "  - {role: clerk, counts: {queryItem: 1, calculation: 0}}\n"
             "  - {user: nora, not: '**', counts: {queryItem: 0}}\n");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.error, "vexma: expectations: 7, failed: 0\n");
    EXPECT_EQ(result.status, 0);
}

TEST_F(PolicyOfAModel, TellsWhatFailsWithTheRuleAndItsLine) {
    ToolResult const result = test("  - {user: carl, sees: '#c'}\n"
                                   "  - {user: carl, not: '[N].[Day]'}\n"
                                   "  - {role: clerk, counts: {queryItem: 2}}\n"
                                   "  - {user: carl, sees: '#gone'}\n"
                                   "  - {user: zoe, sees: '#a'}\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, StartsWith("p.yaml:6:24: user carl: expected: sees #c\n"
                                       "  calculation \"Sum\" (c): hidden: "));
    EXPECT_THAT(result.out, HasSubstr("clerks: excepted, since it names queryItem \"Cost\" (a), "
                                      "which is excepted (p.yaml:2:3)"));
    EXPECT_THAT(result.out,
                HasSubstr("p.yaml:7:23: user carl: expected: does not see [N].[Day]\n"));
    EXPECT_THAT(result.out, HasSubstr("clerks: included by ** (p.yaml:2:21)"));
    EXPECT_THAT(result.out, HasSubstr("sees 2 of class queryItem\n  there are 1\n"));
    EXPECT_THAT(result.out, HasSubstr("sees #gone\n  no object of the model is meant\n"));
    EXPECT_THAT(result.out,
                HasSubstr("user zoe: expected: sees #a\n  the catalogue has no such user\n"));
    EXPECT_THAT(result.error, HasSubstr("expectations: 5, failed: 5"));
}

TEST_F(PolicyOfAModel, IsNotHeldByARoleThatNobodyKnows) {
    ToolResult const result = test("  - {role: clrek, not: '**'}\n  - {role: clerk, not: '#a'}\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "p.yaml:6:24: role clrek: expected: does not see **\n"
                          "  nobody has such a role, and no view is granted to it\n");
}

TEST_F(PolicyOfAModel, IsNotFailedByACheckThatDidNotFinish) {
    std::string const expectation = "  - {user: carl, not: '#a'}\n";
    ToolResult const text = test(expectation, {"--deadline", "1e-9"});
    EXPECT_EQ(text.status, 5);
    EXPECT_THAT(text.out, HasSubstr("does not see #a\n  the check did not finish: "));
    EXPECT_EQ(text.error, "vexma: expectations: 1, failed: 0, not finished: 1\n");
    ToolResult const junit = test(expectation, {"--deadline", "1e-9", "--format", "junit"});
    EXPECT_EQ(junit.status, 5);
    EXPECT_THAT(junit.out, HasSubstr("tests=\"1\" failures=\"0\" skipped=\"1\""));
    EXPECT_THAT(junit.out, HasSubstr("<skipped message=\"the check did not finish: "));
    EXPECT_EQ(test(expectation + "  - {user: zoe, not: '#a'}\n", {"--deadline", "1e-9"}).status, 1);
}

TEST_F(PolicyOfAModel, IsTestedForEachModelThatNamesIt) {
    m_folder.Write("m.catalog.xml",
                   "<catalog><model path='/content/m' file='m.xml' policy='p.yaml'/>"
                   "<model path='/content/o' file='m.xml' policy='p.yaml'/></catalog>");
    ToolResult const result = test("  - {user: carl, sees: '#a'}\n");
    EXPECT_THAT(result.out, HasSubstr(": user carl at /content/m: expected: sees #a\n"));
    EXPECT_THAT(result.out, HasSubstr(": user carl at /content/o: expected: sees #a\n"));
    EXPECT_EQ(result.error, "vexma: expectations: 2, failed: 2\n");
}

TEST_F(PolicyOfAModel, IsNotTestedBesideACatalogueThatMayNameItToo) {
    m_folder.Write("other.catalog.xml", "<catalog><mod");
    ToolResult const result = test("  - {user: carl, not: '#a'}\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("other.catalog.xml"));
    m_folder.Write("other.catalog.xml", "<catalog><model path='/content/x' file='x' "
                                        "policy='broken.yaml'/></catalog>");
    EXPECT_EQ(test("  - {user: carl, not: '#a'}\n").status, 0);
}

TEST_F(PolicyOfAModel, IsReportedToBuildServers) {
    ToolResult const result =
        test("  - {user: carl, sees: '#b', not: '#b'}\n", {"--format", "junit"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out,
                HasSubstr("<testsuites name=\"vexma test\" tests=\"2\" failures=\"1\">"));
    EXPECT_THAT(result.out, HasSubstr("<testcase classname=\"user carl\" name=\"sees #b\" "
                                      "file=\"p.yaml\" line=\"6\"/>"));
    EXPECT_THAT(result.out, HasSubstr("<failure message=\"user carl does not see #b: no\">"));
}

TEST_F(PolicyOfAModel, IsNotGreenWhenNothingIsExpectedOrNobodyNamesIt) {
    EXPECT_EQ(test("").status, 6);
    m_folder.Write("q.yaml", "views: {}");
    ToolResult const result = m_folder.Run({"test", "q.yaml"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("no catalogue names the policy q.yaml"));
    EXPECT_EQ(m_folder.Run({"test"}).status, 2);
    EXPECT_EQ(m_folder.Run({"test", "p.yaml", "--catalog", "gone.xml"}).status, 3);
}

TEST_F(PolicyOfAModel, IsShownAsTheIdsOfItsViews) {
    m_folder.Write("p.yaml", policy);
    std::vector<std::string> const show{"policy",  "show",       "--catalog", "m.catalog.xml",
                                        "--model", "/content/m", "--view"};
    auto const of = [&](std::vector<std::string> const& more) {
        std::vector<std::string> all = show;
        all.insert(all.end(), more.begin(), more.end());
        return m_folder.Run(all);
    };
    EXPECT_EQ(of({"clerks"}).out, "n\nb\n");
    EXPECT_EQ(of({"clerks", "--set", "hidden"}).out, "");
    EXPECT_EQ(of({"none"}).status, 3);
}

TEST_F(PolicyOfAModel, ThatIsBrokenEndsEveryCommandWhereTheErrorStands) {
    m_folder.Write("p.yaml", "views:\n  a: {include: 'x'}");
    ToolResult const result = m_folder.Run(
        {"tree", "--catalog", "m.catalog.xml", "--model", "/content/m", "--user", "a"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, StartsWith("vexma: p.yaml:2:16: nothing is known to be meant by"));
}

TEST_F(PolicyOfAModel, IsExplainedByRulesAndLines) {
    m_folder.Write("p.yaml", policy);
    std::vector<std::string> const explain{"explain",    "--catalog", "m.catalog.xml", "--model",
                                           "/content/m", "--user",    "carl",          "a"};
    EXPECT_THAT(m_folder.Run(explain).out,
                HasSubstr("by the policy, clerks: excepted by [N].[Cost] (p.yaml:2:35)"));
    std::vector<std::string> json = explain;
    json.push_back("--json");
    EXPECT_THAT(m_folder.Run(json).out, HasSubstr("\"policy\""));
    EXPECT_THAT(m_folder.Run(json).out, Not(HasSubstr("\"policy\": []")));
}

} // namespace
