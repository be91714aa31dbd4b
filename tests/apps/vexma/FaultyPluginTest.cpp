// What the checks of everybody say when the plug-in, a limit or an interrupt fails them: never
// that all is well.

#include "tests/apps/vexma/ToolRun.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

/// Nothing leaks to ann and ben, who have views of their own. 12 objects; a tree is asked for
/// once for each of them, and accessibility once for each object and user.
class CleanModel : public testing::Test {
protected:
    CleanModel() {
        m_folder.Write("m.model.xml", R"(<model defaultLocale="en">
            <namespace id="n" name="N"><querySubject id="q" name="Q"><queryItem id="i" name="I"/>
            </querySubject></namespace><securityViews><securityView id="v"><set kind="included">
            <item>n</item><item>q</item></set></securityView><securityView id="w">
            <set kind="included"><item>n</item><item>q</item><item>i</item></set></securityView>
            </securityViews></model>)");
        m_folder.Write("m.catalog.xml", R"(<catalog><model path="/content/m" file="m.model.xml">
            <grant role="r" view="v"/><grant role="s" view="w"/></model>
            <user name="ann"><role>r</role></user><user name="ben"><role>s</role></user>
            </catalog>)");
    }

    /// A command for all users, with that fault.
    ToolResult run(std::string const& fault, std::string const& command,
                   std::string const& more = "") const {
        return m_folder.RunShell("VEX_REAL_PLUGIN='" VEX_PLUGIN_FILE "' VEX_FAULT='" + fault +
                                 "' \"$VEXMA\" " + command +
                                 " --catalog m.catalog.xml --model /content/m --plugin '" +
                                 VEX_BAD_PLUGIN_DIR "/FaultyPlugin.vpl' " + more);
    }

    ToolFolder m_folder;
};

struct Fault {
    std::string text;
    int status; // of verify
};

void PrintTo(Fault const& fault, std::ostream* out) {
    *out << fault.text;
}

/// What the plug-in does at a place: which calls, from which to which of them.
struct FaultyPlace {
    char const* calls;
    std::vector<std::string> kinds;
};

/// A refusal is told as one; of everything else nothing is known.
std::vector<Fault> faults(std::vector<FaultyPlace> const& places) {
    std::vector<Fault> all;
    for (auto const& [calls, kinds] : places) {
        for (std::string const& kind : kinds) {
            bool const isRefusal = kind == "code" || kind == "raise" || kind == "refuse";
            all.push_back({calls + (' ' + kind), isRefusal ? 1 : 5});
        }
    }
    return all;
}

class VerifyWithFault : public CleanModel, public testing::WithParamInterface<Fault> {};

TEST_P(VerifyWithFault, IsNeverClean) {
    auto const [fault, status] = GetParam();
    ToolResult const text = run(fault, "verify");
    EXPECT_EQ(text.status, status);
    EXPECT_THAT(text.out, Not(HasSubstr("compared for 2 of 2 users")));
    EXPECT_THAT(text.out, AnyOf(HasSubstr("so nothing is known: "), HasSubstr("one is refused: ")));
    ToolResult const told = run(fault, "verify", "--json");
    EXPECT_EQ(told.status, status);
    EXPECT_EQ(json::parse(told.out).at("clean"), false);
    EXPECT_LT(json::parse(told.out).at("comparedUsers"), 2);
    ToolResult const sarif = run(fault, "verify", "--format sarif");
    EXPECT_EQ(sarif.status, status);
    EXPECT_EQ(json::parse(sarif.out).at("runs")[0].at("results")[0].at("level"), "error");
    ToolResult const junit = run(fault, "verify", "--format junit");
    EXPECT_EQ(junit.status, status);
    EXPECT_THAT(junit.out, HasSubstr("<failure type="));
}

TEST_P(VerifyWithFault, CannotBeAcceptedWhereNothingIsKnown) {
    auto const [fault, status] = GetParam();
    ToolResult const written = run(fault, "verify", "--write-baseline known.jsonl");
    ToolResult const accepted = run(fault, "verify", "--accept known.jsonl --json");
    bool const isKnown = accepted.out.find("\"refused\": \"one\"") != std::string::npos;
    EXPECT_EQ(accepted.status, isKnown ? 0 : status) << written.error;
}

INSTANTIATE_TEST_SUITE_P(
    InTheFirstPhase, VerifyWithFault,
    testing::ValuesIn(faults(
        {{"tree 1 1", {"foreign", "platform", "own", "late", "interrupt", "raise", "refuse"}},
         {"tree 2 2", {"foreign", "interrupt", "raise"}}})));
INSTANTIATE_TEST_SUITE_P(InTheSecondPhase, VerifyWithFault,
                         testing::ValuesIn(faults({{"metadata 1 1",
                                                    {"code", "nothing", "odd", "foreign",
                                                     "platform", "late", "raise", "refuse",
                                                     "interrupt"}},
                                                   {"metadata 2 2", {"strange", "code", "nothing"}},
                                                   {"metadata 2 9", {"late"}}})));
INSTANTIATE_TEST_SUITE_P(
    InTheMiddleOfTheChecks, VerifyWithFault,
    testing::ValuesIn(faults(
        {{"access 1 1", {"code", "nothing", "odd", "foreign", "raise", "refuse", "interrupt"}},
         {"access 3 3", {"code", "nothing", "odd", "platform", "late", "raise", "interrupt"}},
         {"access 16 16", {"code"}},
         {"access 16 99", {"nothing"}}})));
INSTANTIATE_TEST_SUITE_P(OfBothSides, VerifyWithFault,
                         testing::ValuesIn(faults({{"any 1 999",
                                                    {"code", "raise", "nothing", "odd", "foreign",
                                                     "own", "platform", "late", "interrupt"}}})));

TEST_F(CleanModel, IsCleanWithoutAFault) {
    ToolResult const result = run("", "verify", "--json");
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_EQ(json::parse(result.out).at("clean"), true);
    EXPECT_EQ(json::parse(result.out).at("comparedUsers"), 2);
}

// What the answers hold was verified without the extension's word.
TEST_F(CleanModel, IsVerifiedByItsAnswersWhenThePluginExplainsNothing) {
    EXPECT_EQ(run("tree 1 9 nothing", "verify").status, 0);
}

TEST_F(CleanModel, IsUnverifiedWhenBothSidesRefuseEverybodyForWantOfAView) {
    ToolResult const result = run("any 1 999 refuse", "verify", "--json");
    EXPECT_EQ(result.status, 6);
    EXPECT_EQ(json::parse(result.out).at("clean"), false);
}

TEST_F(CleanModel, IsNotFinishedWhenNoTimeIsLeft) {
    for (char const* const user : {"", "--user ann", "--user ben"}) {
        std::string const more = std::string("--deadline 1e-9 ") + user;
        ToolResult const text = run("", "verify", more);
        EXPECT_EQ(text.status, 5);
        EXPECT_THAT(text.out, Not(HasSubstr("0 leaks")));
        ToolResult const told = run("", "verify", more + " --json");
        EXPECT_EQ(json::parse(told.out).at("clean"), false);
        EXPECT_EQ(json::parse(told.out).at("finished"), false);
    }
}

TEST_F(CleanModel, IsDecidedForNobodyWhosePluginAnswersOddly) {
    for (char const* const fault : {"access 1 1 code", "access 1 1 nothing", "access 1 1 foreign",
                                    "access 1 1 interrupt", "tree 1 1 late"}) {
        ToolResult const matrix = run(fault, "matrix", "--class queryItem");
        EXPECT_EQ(matrix.status, 5) << fault;
        EXPECT_THAT(matrix.out, HasSubstr("?     yes   queryItem \"I\" (i)\n")) << fault;
    }
    ToolResult const refused = run("access 1 1 refuse", "matrix", "--class queryItem");
    EXPECT_EQ(refused.status, 0);
    EXPECT_THAT(refused.out, HasSubstr("-     yes   queryItem \"I\" (i)\n"));
    ToolResult const who = run("tree 1 1 late", "who", "i");
    EXPECT_EQ(who.status, 5);
    EXPECT_THAT(who.out, HasSubstr("the check did not finish for user ann"));
}

TEST_F(CleanModel, IsSaidToBeOpenWhereAccessIsNotFinished) {
    for (char const* const fault :
         {"access 1 1 code", "access 1 1 nothing", "access 1 1 foreign", "access 1 1 interrupt"}) {
        ToolResult const result = run(fault, "access", "--all-users i");
        EXPECT_EQ(result.status, 5) << fault;
        EXPECT_EQ(result.out, "?\tann\ti\n1\tben\ti\n") << fault;
        EXPECT_THAT(result.error, HasSubstr("vexma: ann: not finished: ")) << fault;
    }
    ToolResult const refused = run("access 1 1 refuse", "access", "--all-users i");
    EXPECT_EQ(refused.status, 0);
    EXPECT_EQ(refused.out, "-\tann\ti\n1\tben\ti\n");
    EXPECT_THAT(run("", "access", "--all-users i --deadline 1e-9").out, HasSubstr("?\tben\ti\n"));
}

TEST_F(CleanModel, DiffersUnknowinglyWhereAComparisonIsNotFinished) {
    for (char const* const fault : {"tree 1 1 foreign", "tree 2 2 platform"}) {
        ToolResult const result = run(fault, "diff", "--all-users");
        EXPECT_EQ(result.status, 1) << fault;
        EXPECT_THAT(result.out, HasSubstr("ann: not finished, so nothing is known: ")) << fault;
        EXPECT_THAT(result.out, Not(HasSubstr("ann: no difference"))) << fault;
        EXPECT_THAT(run(fault, "diff", "--all-users --json").out, HasSubstr("\"unfinished\": "));
    }
}

TEST_F(CleanModel, DiffersUnknowinglyWhereNoTimeIsLeft) {
    for (char const* const form : {"", "--json", "--exit-code", "--json --exit-code"}) {
        ToolResult const result =
            run("", "diff", std::string("--all-users --deadline 1e-9 ") + form);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, ""); // not even rights were compared
        EXPECT_THAT(result.error, HasSubstr("the deadline of the call has passed"));
    }
}

TEST_F(CleanModel, DiffersUnknowinglyForTheUserWhomAnInterruptStrikes) {
    for (char const* const fault : {"tree 1 1 interrupt", "tree 2 2 interrupt", "tree 2 2 after"}) {
        ToolResult const text = run(fault, "diff", "--all-users --exit-code");
        EXPECT_EQ(text.status, 1) << fault;
        EXPECT_THAT(text.out, HasSubstr("ann: not finished, so nothing is known: the call was "
                                        "cancelled"));
        EXPECT_THAT(text.out, HasSubstr("\nben: no difference\n"));
        json const users = json::parse(run(fault, "diff", "--all-users --json").out).at("users");
        ASSERT_EQ(users.size(), 2);
        EXPECT_THAT(users[0].at("unfinished"), HasSubstr("the call was cancelled"));
        EXPECT_FALSE(users[1].contains("unfinished"));
    }
}

// An interrupt that comes when the plug-in has answered reaches what the host makes of it.
TEST_F(CleanModel, IsNotFinishedWhereTheHostsOwnWorkIsNot) {
    ToolResult const who = run("tree 1 1 after", "who", "i");
    EXPECT_EQ(who.status, 5);
    EXPECT_THAT(who.out, HasSubstr("the check did not finish for user ann\n    the call was "
                                   "cancelled"));
    EXPECT_THAT(who.out, HasSubstr("  seen by user ben\n"));
    ToolResult const matrix = run("tree 1 1 after", "matrix", "--class queryItem");
    EXPECT_EQ(matrix.status, 5);
    EXPECT_THAT(matrix.out, HasSubstr("?     yes   queryItem \"I\" (i)\n"));
    ToolResult const explain = run("tree 1 1 after", "explain", "--user ann i");
    EXPECT_EQ(explain.status, 1);
    EXPECT_EQ(explain.out, "");
    EXPECT_THAT(explain.error, HasSubstr("the call was cancelled"));
    ToolResult const verify = run("tree 1 1 after", "verify");
    EXPECT_EQ(verify.status, 5);
    EXPECT_THAT(verify.out, HasSubstr("ann: not finished, so nothing is known: "));
}

TEST_F(CleanModel, IsUnknownToEverybodyWhenNoTimeIsLeft) {
    ToolResult const who = run("", "who", "i --json --deadline 1e-9");
    EXPECT_EQ(who.status, 5);
    EXPECT_THAT(who.out, HasSubstr("\"sees\": \"unknown\""));
    EXPECT_THAT(who.out, Not(HasSubstr("\"sees\": \"no\"")));
    ToolResult const matrix = run("", "matrix", "--deadline 1e-9");
    EXPECT_EQ(matrix.status, 5);
    EXPECT_EQ(matrix.out, "");
    EXPECT_THAT(matrix.error, HasSubstr("the deadline of the call has passed"));
    ToolResult const explain = run("", "explain", "--user ann i --deadline 1e-9");
    EXPECT_EQ(explain.status, 1);
    EXPECT_EQ(explain.out, "");
}

} // namespace
