#include "tests/apps/vexma/ToolRun.h"

#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

constexpr char const* request =
    R"({"action": 31000, "in": [{"long": 0}, {"string": "/content/small"}, {"node": "<Metadata Depth=\"1\"><Property name=\"*/@name\"/></Metadata>"}]})";
constexpr char const* answer =
    R"({"code":1,"appended":[{"long":1},{"node":true}],"response":"<Response><Result><folder name=\"Sales\"/></Result></Response>"})";

/// The lines that ann's session gives for the lines that it gets.
std::vector<std::string> answers(std::vector<std::string> const& lines,
                                 std::vector<std::string> const& more = {}) {
    std::string input;
    for (std::string const& line : lines) {
        input += line + '\n';
    }
    ToolResult const result = ToolFolder().Run(ToolFolder::As("session", "ann", more), input);
    EXPECT_EQ(result.status, 0);
    std::istringstream out(result.out);
    std::vector<std::string> given;
    for (std::string line; std::getline(out, line);) {
        given.push_back(line);
    }
    EXPECT_EQ(given.size(), lines.size());
    given.resize(lines.size());
    return given;
}

/// The text of the error that a line brings; the line after it is answered.
std::string errorOf(std::string const& line, std::vector<std::string> const& more = {}) {
    std::vector<std::string> const given = answers({line, request}, more);
    EXPECT_EQ(given[1], answer);
    Json const json = Json::parse(given[0]);
    EXPECT_EQ(json.size(), 1U);
    EXPECT_EQ(json["error"].size(), 1U);
    return json["error"]["text"].get<std::string>();
}

TEST(Session, AnswersAnActionWithCodeAppendedAndResponse) {
    EXPECT_EQ(answers({request})[0], answer);
}

TEST(Session, CallsAnyPluginThatIsNamed) {
    std::string const plugin = std::string(VEX_BAD_PLUGIN_DIR) + "/RuleBreaker.vpl";
    std::vector<std::string> const given = answers(
        {R"({"action": 1, "in": []})", R"({"action": 777, "in": []})"}, {"--plugin", plugin});
    EXPECT_THAT(given[0], HasSubstr(R"({"code":1,"appended":[{"long":7},)"));
    EXPECT_THAT(given[1], HasSubstr(R"({"code":6,"appended":[],)"));
}

TEST(Session, SaysThatALibraryRegistersNoPlugin) {
    std::string const plugin = std::string(VEX_BAD_PLUGIN_DIR) + "/NoPlugin.vpl";
    ToolResult const result =
        ToolFolder().Run(ToolFolder::As("session", "ann", {"--plugin", plugin}), request);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.error, HasSubstr("NoPlugin.vpl registers no plug-in"));
}

TEST(Session, NeedsNoLineBreakAfterTheLastLine) {
    ToolResult const result = ToolFolder().Run(ToolFolder::As("session", "ann"), request);
    EXPECT_EQ(result.out, std::string(answer) + '\n');
}

TEST(Session, GivesTheAccessVerdictAsTheSecondAppendedValue) {
    EXPECT_EQ(answers({R"({"action": {"long": 32000}, "in": [{"long": 0}, )"
                       R"({"string": "/content/small"}, {"handle": "i2"}, {"long": 0}]})"})[0],
              R"({"code":1,"appended":[{"long":1},{"long":0}],)"
              R"("response":"<Response><Result/></Response>"})");
}

TEST(Session, GivesEveryDetailOfAFailure) {
    std::vector<std::string> const given =
        answers({R"({"action": 31000, "in": [{"string": "x"}]})", request});
    Json const json = Json::parse(given[0]);
    EXPECT_EQ(json["error"]["id"], 1444379511);
    EXPECT_EQ(json["error"]["source"], "VexMAAction");
    EXPECT_EQ(json["error"]["line"], 83);
    EXPECT_EQ(json["error"]["function"], "VexAction::validateParameter");
    EXPECT_EQ(json["error"]["parameters"], Json::array());
    EXPECT_EQ(json["response"], "<Response><Result/></Response>");
    EXPECT_EQ(given[1], answer);
}

TEST(Session, KeepsWhatThePluginPrintsOutOfItsResults) {
    ToolResult const result =
        ToolFolder().Run(ToolFolder::As("session", "ann"), R"({"action": 31000, "in": []})");
    EXPECT_THAT(result.out, Not(HasSubstr("FAILURE")));
    EXPECT_THAT(result.error, HasSubstr("*** FAILURE: VemAction::validateParameter"));
}

TEST(Session, DistinguishesUnknownActionsFromOtherValues) {
    std::vector<std::string> const given =
        answers({R"({"action": 5, "in": []})", R"({"action": {"empty": true}, "in": []})"});
    EXPECT_EQ(Json::parse(given[0])["code"], 6);
    EXPECT_EQ(Json::parse(given[1])["code"], 1);
}

TEST(Session, SendsNotificationsAndStartsAfresh) {
    std::vector<std::string> const given =
        answers({request, R"({"notify": 2})", request, R"({"notify": 1})", request});
    EXPECT_EQ(given[1], R"({"notified":2})");
    EXPECT_EQ(given[2], answer);
    EXPECT_EQ(given[3], R"({"notified":1})");
    EXPECT_EQ(given[4], answer);
}

struct BadLine {
    char const* what;
    std::string line;
    char const* says;
};

void PrintTo(BadLine const& bad, std::ostream* out) {
    *out << bad.what;
}

class BadLines : public testing::TestWithParam<BadLine> {};

TEST_P(BadLines, GiveAnErrorAndLeaveTheSessionUsable) {
    EXPECT_THAT(errorOf(GetParam().line), HasSubstr(GetParam().says));
}

INSTANTIATE_TEST_SUITE_P(
    Session, BadLines,
    testing::Values(
        BadLine{"no JSON", "what", "not a JSON object"}, BadLine{"an empty line", "", "not a JSON"},
        BadLine{"an array", "[]", "not a JSON object"},
        BadLine{"ill-formed UTF-8", "{\"notify\": \"\xFF\"}", "not a JSON object"},
        BadLine{"neither action nor event", R"({"act": 1})", "neither"},
        BadLine{"no parameters", R"({"action": 31000})", "neither"},
        BadLine{"both", R"({"action": 31000, "in": [], "notify": 1})", "neither"},
        BadLine{"a kind that is no number", R"({"notify": "1"})", "whole number"},
        BadLine{"a kind that is too large", R"({"notify": 4294967296})", "whole number"},
        BadLine{"a fraction", R"({"action": 1.5, "in": []})", "whole number"},
        BadLine{"a number that is too large", R"({"action": 9223372036854775808, "in": []})",
                "whole number"},
        BadLine{"an unknown kind of value", R"({"action": 1, "in": [{"short": 1}]})",
                "not a value"},
        BadLine{"two values in one", R"({"action": 1, "in": [{"long": 1, "string": ""}]})",
                "not a value"},
        BadLine{"an empty value that is not true", R"({"action": 1, "in": [{"empty": false}]})",
                "not true"},
        BadLine{"a handle that names nothing", R"({"action": 1, "in": [{"handle": "x9"}]})",
                "\"x9\""},
        BadLine{"malformed XML", R"({"action": 1, "in": [{"node": "<a>"}]})", "node:1:"},
        BadLine{"a document type", R"({"action": 1, "in": [{"node": "<!DOCTYPE a><a/>"}]})",
                "document type"}));

TEST(Session, RefusesARequestThatIsTooLong) {
    std::string const node(2'000, 'x');
    EXPECT_THAT(errorOf(R"({"action": 1, "in": [{"node": "<a>)" + node + R"(</a>"}]})",
                        {"--max-request", "1000"}),
                HasSubstr("1000"));
}

TEST(Session, DropsALineThatIsTooLongAndReadsTheNext) {
    EXPECT_THAT(errorOf(std::string(200'000, ' '), {"--max-request", "1000"}),
                HasSubstr("--max-request"));
}

TEST(Session, KeepsTheResponseWhenALimitEndsACall) {
    std::vector<std::string> const given = answers({request}, {"--max-elements", "2"});
    Json const json = Json::parse(given[0]);
    EXPECT_EQ(json["error"].size(), 1U);
    EXPECT_EQ(json["response"], "<Response><Result/></Response>");
}

/// A metadata and an access line that name a model path.
std::vector<std::string> linesAbout(std::string const& path) {
    return {
        R"({"action": 31000, "in": [{"long": 0}, {"string": ")" + path +
            R"("}, {"node": "<Metadata Depth=\"1\"><Property name=\"*/@name\"/></Metadata>"}]})",
        R"({"action": {"long": 32000}, "in": [{"long": 0}, {"string": ")" + path +
            R"("}, {"handle": "i2"}, {"long": 0}]})"};
}

TEST(SessionPaths, AreTheOneThatTheSessionWasOpenedWith) {
    for (char const* const path : {"file:small", "/content/other", "", "path:", "/content/small/",
                                   "path:path:/content/small", "path:file:small"}) {
        for (std::string const& line : linesAbout(path)) {
            EXPECT_EQ(errorOf(line), "the session may only be asked about its own model path "
                                     "\"/content/small\", and \"" +
                                         std::string(path) +
                                         "\" is another one; name its own, or open a session for "
                                         "the other");
        }
    }
    EXPECT_EQ(answers({linesAbout("path:/content/small")[0], request}),
              (std::vector<std::string>{answer, answer}));
}

TEST(SessionPaths, LetNobodyWithoutViewsSeeAnything) {
    ToolFolder const folder;
    for (std::string const& line : linesAbout("file:small")) {
        ToolResult const result = folder.Run(ToolFolder::As("session", "bob"), line);
        EXPECT_THAT(result.out, HasSubstr("may only be asked about its own model path"));
        EXPECT_THAT(result.out, Not(HasSubstr("Sales")));
        EXPECT_THAT(result.out, Not(HasSubstr("code")));
    }
}

TEST(SessionPaths, StayAfterTheSessionStartsAfresh) {
    std::vector<std::string> const given =
        answers({R"({"notify": 1})", linesAbout("file:small")[0], R"({"notify": 2})",
                 linesAbout("file:small")[1], R"({"notify": 0})", linesAbout("file:small")[0]});
    for (std::size_t const number : {1U, 3U, 5U}) {
        EXPECT_THAT(given[number], HasSubstr("may only be asked about its own model path"));
    }
}

TEST(SessionPaths, AreAnyWhenTheSessionIsForTryingThePlugin) {
    ToolFolder const folder;
    for (std::string const& line : linesAbout("file:small")) {
        ToolResult const result =
            folder.Run(ToolFolder::As("session", "bob", {"--any-path"}), line);
        EXPECT_EQ(Json::parse(result.out)["code"], 1);
    }
}

TEST(SessionPaths, AreAnyAnywayWithoutACatalogue) {
    ToolFolder const folder;
    ToolResult const result =
        folder.Run({"session", "small.model.xml"}, linesAbout("file:other")[0]);
    EXPECT_EQ(result.out, std::string(answer) + '\n');
    ToolResult const both = folder.Run({"session", "small.model.xml", "--any-path"});
    EXPECT_EQ(both.status, 2);
    EXPECT_THAT(both.error, HasSubstr("leave it out"));
}

/// Lines that a shell sends to a session, with a change of the model between them.
std::string afterChange(ToolFolder const& folder, std::string const& change) {
    constexpr char const* ask =
        R"(echo '{"id": 1, "action": 31000, "in": [{"long": 0}, {"string": "file:m.xml"}, {"node": "<Metadata><Property n=\"*/@name\"/></Metadata>"}]}')";
    folder.Write("m.xml", "<model><namespace name='Before'/></model>");
    // The session has answered before the file changes.
    return folder
        .RunShell(std::string("mkfifo lines; \"$VEXMA\" session m.xml < lines > answers & exec 3> "
                              "lines; ") +
                  ask + " >&3; while ! [ -s answers ]; do sleep 0.02; done; " + change +
                  R"(; echo '{"notify": 2}' >&3; )" + ask + " >&3; exec 3>&-; wait; cat answers")
        .out;
}

TEST(Session, ReadsAModelAnewWhenItIsToldThatItChanged) {
    std::string const out =
        afterChange(ToolFolder(), "echo \"<model><namespace name='After'/></model>\" > m.xml");
    EXPECT_EQ(out,
              R"({"id":1,"code":1,"appended":[{"long":1},{"node":true}],)"
              R"("response":"<Response><Result><folder name=\"Before\"/></Result></Response>"})"
              "\n{\"notified\":2}\n"
              R"({"id":1,"code":1,"appended":[{"long":1},{"node":true}],)"
              R"("response":"<Response><Result><folder name=\"After\"/></Result></Response>"})"
              "\n");
}

TEST(Session, KeepsItsModelWhenTheChangedOneIsBroken) {
    for (char const* const change : {"echo '<model>' > m.xml", "rm m.xml"}) {
        std::string const out = afterChange(ToolFolder(), change);
        EXPECT_THAT(out, HasSubstr("\n{\"notified\":2,\"error\":{\"text\":\"m.xml"));
        EXPECT_THAT(out, HasSubstr("; the model that was read before stays in use\"}}\n"));
        EXPECT_EQ(out.find("After"), std::string::npos);
        EXPECT_NE(out.rfind("Before"), out.find("Before"));
    }
}

/// The shell waits until the session minds interrupts, which it does while it works at a line.
TEST(Session, GoesOnAfterAnInterruptThatEndsACall) {
    ToolResult const result = ToolFolder().RunShell(
        "mkfifo lines; \"$VEXMA\" session small.model.xml --plugin '" VEX_BAD_PLUGIN_DIR
        "/RuleBreaker.vpl' < lines > answers & pid=$!; exec 3> lines; "
        R"(echo '{"id": 1, "action": 8, "in": []}' >&3; )" // lists children for ever
        "until [ $((0x$(sed -n 's/^SigCgt:[[:space:]]*//p' /proc/$pid/status) & 2)) -ne 0 ]; do "
        "sleep 0.02; done; kill -INT $pid; "
        R"(echo '{"id": 2, "action": 1, "in": []}' >&3; exec 3>&-; wait $pid; echo $?; cat answers)");
    EXPECT_THAT(result.out, testing::StartsWith("0\n{\"id\":1,\"error\":{\"text\":\"the call was "
                                                "cancelled; ask again"));
    EXPECT_THAT(result.out, HasSubstr("\n{\"id\":2,\"code\":1,"));
}

} // namespace
