#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

struct WrongUsage {
    char const* what;
    std::vector<std::string> arguments;
    char const* says;
};

void PrintTo(WrongUsage const& usage, std::ostream* out) {
    *out << usage.what;
}

class WrongUsages : public testing::TestWithParam<WrongUsage> {};

TEST_P(WrongUsages, EndWithStatusTwoAndSayWhatToDo) {
    ToolResult const result = ToolFolder().Run(GetParam().arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, StartsWith("vexma: "));
    EXPECT_THAT(result.error, HasSubstr(GetParam().says));
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, WrongUsages,
    testing::Values(
        WrongUsage{"no command", {}, "--help"},
        WrongUsage{"an unknown command", {"dance"}, "dance"},
        WrongUsage{"an unknown option", {"tree", "small.model.xml", "--loud"}, "--loud"},
        WrongUsage{"no source", {"metadata"}, "--catalog CATALOG.xml"},
        WrongUsage{"two sources",
                   {"metadata", "small.model.xml", "--catalog", "small.catalog.xml", "--model",
                    "/content/small", "--user", "ann"},
                   "leave one out"},
        WrongUsage{"a catalogue alone", {"tree", "--catalog", "small.catalog.xml"}, "--user NAME"},
        WrongUsage{
            "a user without catalogue", {"tree", "small.model.xml", "--user", "ann"}, "--catalog"},
        WrongUsage{"two starts",
                   {"tree", "small.model.xml", "--start", "[a]", "--ref", "[a]"},
                   "leave one out"},
        WrongUsage{"a request and an option that builds one",
                   {"tree", "small.model.xml", "--request", "r.xml", "--depth", "1"},
                   "--depth"},
        WrongUsage{
            "model and request from one input", {"tree", "-", "--request", "-"}, "standard input"},
        WrongUsage{"a constraint without value",
                   {"tree", "small.model.xml", "--constraint", "usage"},
                   "K=V"},
        WrongUsage{"a depth that is no number", {"tree", "small.model.xml", "--depth", "x"}, "x"},
        WrongUsage{"access without object", {"access", "small.model.xml"}, "no object"},
        WrongUsage{"access with an unknown option",
                   {"access", "small.model.xml", "q1", "--loud"},
                   "--loud"},
        WrongUsage{"a session on standard input", {"session", "-"}, "name a model file"},
        WrongUsage{"validate without file", {"validate"}, "one file"}));

class Helps : public testing::TestWithParam<std::string> {};

TEST_P(Helps, GoToStandardOutputWithExamples) {
    ToolResult const result = ToolFolder().Run({GetParam(), "--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("Example"));
    EXPECT_THAT(result.error, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(CommandLine, Helps,
                         testing::Values("metadata", "tree", "access", "session", "validate",
                                         "cache", "completion", "man"));

struct Unreadable {
    char const* what;
    std::vector<std::string> arguments;
    char const* says;
};

void PrintTo(Unreadable const& unreadable, std::ostream* out) {
    *out << unreadable.what;
}

class Unreadables : public testing::TestWithParam<Unreadable> {};

TEST_P(Unreadables, EndWithStatusThreeAndSayWhatIsWrong) {
    ToolFolder const folder;
    folder.Write("bad.xml", "<model>\n<model");
    folder.Write("bad.catalog.xml", "<catalog>\n<what/></catalog>");
    ToolResult const result = folder.Run(GetParam().arguments);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, StartsWith("vexma: "));
    EXPECT_THAT(result.error, HasSubstr(GetParam().says));
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, Unreadables,
    testing::Values(
        Unreadable{"a missing model", {"tree", "none.xml"}, "none.xml: cannot be opened"},
        Unreadable{"a folder as model", {"tree", "."}, "cannot be read"},
        Unreadable{"a bad model", {"tree", "bad.xml"}, "bad.xml:2:"},
        Unreadable{"a missing catalogue",
                   {"tree", "--catalog", "none.xml", "--model", "m", "--user", "u"},
                   "none.xml"},
        Unreadable{"a bad catalogue",
                   {"tree", "--catalog", "bad.catalog.xml", "--model", "m", "--user", "u"},
                   "bad.catalog.xml:2:"},
        Unreadable{"an unknown user", ToolFolder::As("tree", "zoe"), "\"ann\", \"bob\""},
        Unreadable{
            "an unknown model path",
            {"tree", "--catalog", "small.catalog.xml", "--model", "/content/x", "--user", "ann"},
            "\"/content/small\""},
        Unreadable{"a missing request",
                   {"metadata", "small.model.xml", "--request", "none.xml"},
                   "none.xml"},
        Unreadable{
            "a bad request", {"metadata", "small.model.xml", "--request", "bad.xml"}, "bad.xml:2:"},
        Unreadable{
            "a request that is too long",
            {"metadata", "small.model.xml", "--request", "small.model.xml", "--max-request", "100"},
            "longer than 100 bytes"},
        Unreadable{"an object that is not there", {"access", "small.model.xml", "q9"}, "\"q9\""}));

TEST(CommandLine, RefusesAPluginThatIsNone) {
    ToolFolder const folder;
    ToolResult const result =
        folder.Run({"tree", "small.model.xml", "--plugin", "small.model.xml"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("small.model.xml"));
}

TEST(CommandLine, EndsWithoutAWordButNotWellWhenTheReaderOfItsResultsStopsReading) {
    ToolResult const result =
        ToolFolder().RunShell("mkfifo pipe; exec 3<> pipe 4> pipe 3<&-; "
                              "\"$VEXMA\" metadata small.model.xml >&4; echo $? >&2");
    EXPECT_EQ(result.error, "1\n");
}

TEST(CommandLine, SaysWhenItsResultsCannotBeWritten) {
    ToolResult const result =
        ToolFolder().RunShell("\"$VEXMA\" metadata small.model.xml > /dev/full");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("the results cannot be written"));
}

} // namespace
