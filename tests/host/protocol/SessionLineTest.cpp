#include "host/protocol/SessionLine.h"

#include "KRLException.h"
#include "host/store/image/Budget.h"

#include <limits>
#include <ostream>

#include <gmock/gmock.h>

namespace {

using vex::SessionValue;
using Kind = SessionValue::Kind;
using testing::HasSubstr;
using testing::StartsWith;

vex::SessionAction actionOf(std::string const& line) {
    return std::get<vex::SessionAction>(vex::readSessionLine(line).says);
}

/// The only parameter of an action's line.
SessionValue valueOf(std::string const& value) {
    vex::SessionAction const line = actionOf(R"({"action": 1, "in": [)" + value + "]}");
    EXPECT_EQ(line.in.size(), 1U);
    return line.in.at(0);
}

std::string problemOf(std::string const& line) {
    return std::get<vex::UnusableLine>(vex::readSessionLine(line).says).problem;
}

TEST(SessionLine, SaysWhichActionAndWithWhat) {
    vex::SessionAction const line = actionOf(
        R"({"action": 31000, "in": [{"long": 0}, {"string": "/content/m"}, {"node": "<a/>"}]})");
    EXPECT_EQ(line.action, (SessionValue{Kind::Long, 31000, ""}));
    EXPECT_EQ(line.in,
              (std::vector<SessionValue>{
                  {Kind::Long, 0, ""}, {Kind::String, 0, "/content/m"}, {Kind::Node, 0, "<a/>"}}));
}

TEST(SessionLine, MayHaveItsMembersInAnyOrderAndTheLastOfOneNameCounts) {
    vex::SessionAction const line =
        actionOf(R"({"in": [{"long": 1, "long": 2}], "action": {"string": "x"}})");
    EXPECT_EQ(line.action, (SessionValue{Kind::String, 0, "x"}));
    EXPECT_EQ(line.in, (std::vector<SessionValue>{{Kind::Long, 2, ""}}));
}

TEST(SessionLine, HoldsAValueOfEachKind) {
    EXPECT_EQ(valueOf(R"({"long": -7})"), (SessionValue{Kind::Long, -7, ""}));
    EXPECT_EQ(valueOf(R"({"string": ""})"), (SessionValue{Kind::String, 0, ""}));
    EXPECT_EQ(valueOf(R"({"handle": "[Sales].[Orders]"})"),
              (SessionValue{Kind::Handle, 0, "[Sales].[Orders]"}));
    EXPECT_EQ(valueOf(R"({"node": "no XML"})"), (SessionValue{Kind::Node, 0, "no XML"}));
    EXPECT_EQ(valueOf(R"({"empty": true})"), (SessionValue{Kind::Empty, 0, ""}));
}

TEST(SessionLine, HoldsTextsAsUtf8WhateverIsEscaped) {
    EXPECT_EQ(valueOf(R"({"string": "\u00fc\ud83d\ude00\n"})").text, "\xC3\xBC\xF0\x9F\x98\x80\n");
}

TEST(SessionLine, HoldsEveryWholeNumberThatALongHolds) {
    constexpr long most = std::numeric_limits<long>::max();
    constexpr long least = std::numeric_limits<long>::min();
    EXPECT_EQ(valueOf("{\"long\": " + std::to_string(most) + '}').number, most);
    EXPECT_EQ(valueOf("{\"long\": " + std::to_string(least) + '}').number, least);
    EXPECT_EQ(valueOf(R"({"long": 9223372036854775808})").kind, Kind::Unusable);
}

struct BadValue {
    char const* value;
    char const* problem;
};

void PrintTo(BadValue const& bad, std::ostream* out) {
    *out << bad.value;
}

class BadValues : public testing::TestWithParam<BadValue> {};

TEST_P(BadValues, KeepTheirPlaceAndSayWhatIsWrong) {
    vex::SessionAction const line =
        actionOf(std::string(R"({"action": 1, "in": [{"long": 5}, )") + GetParam().value + "]}");
    EXPECT_EQ(line.in.at(0), (SessionValue{Kind::Long, 5, ""}));
    EXPECT_EQ(line.in.at(1).kind, Kind::Unusable);
    EXPECT_EQ(
        line.in.at(1).text,
        std::string("a value of the line ") + GetParam().problem +
            R"(; write {"long": n}, {"string": s}, {"handle": "id or reference"}, {"node": "XML text"} or {"empty": true})");
}

INSTANTIATE_TEST_SUITE_P(
    SessionLine, BadValues,
    testing::Values(
        BadValue{R"({"long": 1.5})", "is not a whole number in the range of a long"},
        BadValue{R"({"long": "1"})", "is not a whole number in the range of a long"},
        BadValue{R"({"string": 1})", "is not a text"},
        BadValue{R"({"handle": null})", "is not a text"},
        BadValue{R"({"node": {}})", "is not a text"},
        BadValue{R"({"empty": false})", "is not true"}, BadValue{R"({"empty": 1})", "is not true"},
        BadValue{R"({"short": 1})",
                 "is not a value of an action: it has the unknown key \"short\""},
        BadValue{
            R"({"lnog": 1})",
            "is not a value of an action: it has the unknown key \"lnog\", perhaps for \"long\""},
        BadValue{R"({"long": 1, "strng": ""})", "is not a value of an action: it has the unknown "
                                                "key \"strng\", perhaps for \"string\""},
        BadValue{R"({"long": 1, "string": ""})", "is not a value of an action"},
        BadValue{"{}", "is not a value of an action"}, BadValue{"1", "is not a value of an action"},
        BadValue{"[]", "is not a value of an action"}));

TEST(SessionLine, MayHaveAnUnusableAction) {
    EXPECT_THAT(actionOf(R"({"action": 1.5, "in": []})").action.text,
                HasSubstr("is not a whole number in the range of a long"));
    EXPECT_THAT(actionOf(R"({"action": "31000", "in": []})").action.text,
                HasSubstr("is not a value of an action"));
}

TEST(SessionLine, SaysWhichNotification) {
    for (int const kind : {0, 1, 2, -1, 2'147'483'647, std::numeric_limits<int>::min()}) {
        auto const line = vex::readSessionLine("{\"notify\": " + std::to_string(kind) + '}');
        EXPECT_EQ(std::get<vex::SessionNotification>(line.says).kind, kind);
    }
}

TEST(SessionLine, IsUnusableWhenTheKindOfANotificationIsNoIntOrMore) {
    for (char const* const kind : {"\"1\"", "1.0", "null", "2147483648", "-2147483649",
                                   "18446744073709551615", "-9223372036854775808"}) {
        EXPECT_EQ(problemOf(std::string("{\"notify\": ") + kind + '}'),
                  "the kind of a notification is a whole number, such as 1")
            << kind;
    }
}

TEST(SessionLine, IsUnusableWhenItIsNoJsonObject) {
    for (char const* const line :
         {"", "what", "[]", "1", "\"\"", "{\"notify\": 1", "{\"notify\": 1} 2",
          "{\"notify\": \"\xFF\"}", R"({"action": 1, "in": [{"string": "\ud83d"}]})"}) {
        EXPECT_EQ(
            problemOf(line),
            R"(the line is not a JSON object; send {"action": A, "in": [V, ...]} or {"notify": kind} on one line)")
            << line;
    }
}

TEST(SessionLine, IsUnusableWhenItIsNeitherActionNorEvent) {
    for (char const* const line :
         {"{}", R"({"in": []})", R"({"action": 31000})", R"({"action": 31000, "in": 1})",
          R"({"action": 1, "notify": 1})", R"({"action": 1, "in": [], "notify": 1})"}) {
        EXPECT_EQ(
            problemOf(line),
            R"(the line is neither an action nor an event; send {"action": A, "in": [V, ...]} or {"notify": kind} on one line)")
            << line;
    }
}

TEST(SessionLine, NamesTheFirstKeyThatHasNoPlaceInIt) {
    constexpr char const* wanted =
        R"(; send {"action": A, "in": [V, ...]} or {"notify": kind} on one line)";
    EXPECT_EQ(
        problemOf(R"({"act": 1})"),
        std::string("the line is neither an action nor an event: it has the unknown key \"act\"") +
            wanted);
    EXPECT_EQ(problemOf(R"({"actoin": 31000, "in": []})"),
              std::string("the line is neither an action nor an event: it has the unknown key "
                          "\"actoin\", perhaps for \"action\"") +
                  wanted);
    EXPECT_EQ(problemOf(R"({"notify": 1, "ID": 2})"),
              std::string("the line is neither an action nor an event: it has the unknown key "
                          "\"ID\", perhaps for \"id\"") +
                  wanted);
    EXPECT_THAT(problemOf("{\"" + std::string(10'000, 'k') + "\": 1}"),
                StartsWith("the line is neither an action nor an event: it has the unknown key \"" +
                           std::string(40, 'k') + "\";"));
}

TEST(SessionLine, MayBearAnIdOfAnyKind) {
    for (char const* const id : {"7", "\"a\\\"b\"", "null", "[1,{\"x\":[]}]", "1.5"}) {
        vex::ReadLine const line =
            vex::readSessionLine(std::string("{\"id\": ") + id + ", \"notify\": 1}");
        EXPECT_EQ(line.id, id);
        EXPECT_EQ(std::get<vex::SessionNotification>(line.says).kind, 1);
    }
    EXPECT_EQ(vex::readSessionLine(R"({"notify": 1})").id, "");
}

TEST(SessionLine, KeepsItsIdWhenItIsUnusable) {
    EXPECT_EQ(vex::readSessionLine(R"({"id": "x", "action": 1})").id, "\"x\"");
}

TEST(SessionLine, IsUnusableWithAnIdThatIsNestedDeeply) {
    std::string const deep = std::string(1'000'000, '[') + std::string(1'000'000, ']');
    vex::ReadLine const line = vex::readSessionLine("{\"notify\": 1, \"id\": " + deep + '}');
    EXPECT_EQ(line.id, "");
    EXPECT_THAT(std::get<vex::UnusableLine>(line.says).problem,
                StartsWith("the id of the line is nested too deeply"));
}

TEST(LongestSessionLine, HasRoomForARequestWithEachByteEscaped) {
    EXPECT_EQ(vex::longestSessionLine(0), 65'536U);
    EXPECT_EQ(vex::longestSessionLine(1'000), 71'536U);
}

TEST(LongestSessionLine, IsWithoutBoundWhenTheRequestIs) {
    constexpr std::size_t unbounded = std::numeric_limits<std::size_t>::max();
    EXPECT_EQ(vex::longestSessionLine(unbounded), unbounded);
}

/// Steps that reading the line takes.
std::size_t stepsFor(std::string const& line, std::string const& problem) {
    vex::Budget const budget({});
    EXPECT_THAT(problemOf(line), HasSubstr(problem));
    return budget.stepsDone();
}

TEST(SessionLine, OfTooManyKeysIsReadToTheFirstThatIsTooMany) {
    std::string line = "{";
    for (int i = 0; i < 400'000; ++i) {
        line += "\"k" + std::to_string(i) + "\": 1, ";
    }
    EXPECT_LE(stepsFor(line + "\"notify\": 1}", "more than 100 keys, which is the limit"), 101U);
    EXPECT_LE(stepsFor("{\"id\": " + line + "\"k\": 1}, \"notify\": 1}", "more than 100 keys"),
              102U);
}

TEST(SessionLine, OfTooManyValuesIsReadToTheFirstThatIsTooMany) {
    std::string values = R"({"action": 1, "in": [{"empty": true})";
    for (int i = 0; i < 400'000; ++i) {
        values += R"(, {"empty": true})";
    }
    EXPECT_LE(stepsFor(values + "]}", "more than 10000 values, which is the limit; send fewer, or "
                                      "raise it with --max-values"),
              10'001U);
    EXPECT_EQ(
        std::get<vex::SessionAction>(vex::readSessionLine(values + "]}", 1'000'000).says).in.size(),
        400'001U);
}

TEST(SessionLine, EndsWhenTheCallIsCancelled) {
    std::atomic<bool> const cancelled{true};
    vex::Budget const budget({.cancelled = &cancelled});
    EXPECT_THROW(vex::readSessionLine(R"({"notify": 1})"), KRLLimitException);
}

} // namespace
