#include "tests/apps/vexma/ToolRun.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST(Validate, SaysNothingAboutSoundFiles) {
    ToolFolder const folder;
    folder.Write("sound.model.xml", "<model><namespace name='A'/></model>");
    folder.Write("sound.catalog.xml",
                 "<catalog><model path='/content/a' file='sound.model.xml'/></catalog>");
    for (char const* const file : {"sound.model.xml", "sound.catalog.xml"}) {
        ToolResult const result = folder.Run({"validate", file});
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.error, IsEmpty());
    }
}

TEST(Validate, ReportsEveryErrorOfAModelAndEndsWithStatusThree) {
    ToolFolder const folder;
    folder.Write("bad.xml", "<model>\n<x id='a'/>\n<x id='a'/>\n<property/>\n</model>");
    ToolResult const result = folder.Run({"validate", "bad.xml"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, HasSubstr("bad.xml:3:"));
    EXPECT_THAT(result.out, HasSubstr("bad.xml:4:"));
    EXPECT_THAT(result.error, HasSubstr("errors: 2"));
}

TEST(Validate, ReportsDoubtfulSpotsAndEndsWithStatusZero) {
    ToolFolder const folder;
    folder.Write("odd.xml", "<model><namespace name='A'>\n"
                            "<shortcut name='S' refobj='[A].[None]'/></namespace></model>");
    ToolResult const result = folder.Run({"validate", "odd.xml"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, StartsWith("odd.xml:2:"));
    EXPECT_THAT(result.out, HasSubstr("warning: "));
}

TEST(Validate, GoesThroughTheModelsOfACatalogue) {
    ToolFolder const folder;
    folder.Write("c.xml", "<catalog>\n"
                          "<model path='/content/a' file='small.model.xml'>"
                          "<grant role='r' view='v9'/></model>\n"
                          "<model path='/content/b' file='none.xml'/></catalog>");
    ToolResult const result = folder.Run({"validate", "--catalog", "c.xml"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, HasSubstr("c.xml:2:"));
    EXPECT_THAT(result.out, HasSubstr("\"v9\""));
    EXPECT_THAT(result.out, HasSubstr("c.xml:3:"));
    EXPECT_THAT(result.out, HasSubstr("none.xml"));
}

constexpr char const* lost = "<model><namespace name='A'>\n"
                             "<shortcut name='S' refobj='[A].[None]'/></namespace></model>";

TEST(Validate, CountsWarningsAsErrorsWhenItIsStrict) {
    ToolFolder const folder;
    EXPECT_EQ(folder.Run({"validate", "-"}, lost).status, 0);
    EXPECT_EQ(folder.Run({"validate", "-", "--strict"}, lost).status, 3);
}

constexpr char const* unseen = "<model><namespace id='n' name='A'><x name='B'/></namespace>"
                               "<securityView id='v'><set kind='included'><item>n</item></set>"
                               "</securityView></model>";

TEST(Validate, CountsNotesAsNothing) {
    ToolResult const result = ToolFolder().Run({"validate", "-", "--strict"}, unseen);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("notes: 1 (--all shows them)"));
}

TEST(Validate, ShowsNotesWhenAskedForAll) {
    ToolResult const result = ToolFolder().Run({"validate", "-", "--all"}, unseen);
    EXPECT_THAT(result.out, HasSubstr("note: no view includes x \"B\""));
    EXPECT_THAT(result.out, HasSubstr("[object-in-no-view]"));
}

TEST(Validate, ShowsTenFindingsOfARuleAndHowManyMoreThereAre) {
    std::string model = "<model><namespace name='A'>";
    for (int count = 0; count < 12; ++count) {
        model += "<shortcut name='S' refobj='[None]'/>\n";
    }
    model += "</namespace></model>";
    auto const linesOf = [](std::string const& text) {
        return std::count(text.begin(), text.end(), '\n');
    };
    ToolResult const few = ToolFolder().Run({"validate", "-"}, model);
    EXPECT_THAT(few.out, HasSubstr("standard input: 2 more [dangling-refobj]; --all shows them\n"));
    EXPECT_EQ(linesOf(few.out), 2 * 10 + 2); // each but the first has a reference taken, too
    ToolResult const all = ToolFolder().Run({"validate", "-", "--all"}, model);
    EXPECT_EQ(linesOf(all.out), 12 + 11);
}

TEST(Validate, WritesJson) {
    ToolResult const result = ToolFolder().Run({"validate", "-", "--format", "json"}, lost);
    auto const json = nlohmann::json::parse(result.out);
    EXPECT_EQ(json["warnings"], 1);
    EXPECT_EQ(json["findings"][0]["rule"], "dangling-refobj");
    EXPECT_EQ(json["findings"][0]["line"], 2);
    EXPECT_EQ(json["findings"][0]["file"], "standard input");
}

TEST(Validate, WritesSarifWithTheRuleOfEachResult) {
    ToolFolder const folder;
    folder.Write("a model.xml", lost);
    auto const log =
        nlohmann::json::parse(folder.Run({"validate", "a model.xml", "--format", "sarif"}).out);
    EXPECT_EQ(log["version"], "2.1.0");
    auto const& run = log["runs"][0];
    auto const& result = run["results"][0];
    EXPECT_EQ(result["ruleId"], "dangling-refobj");
    EXPECT_EQ(result["level"], "warning");
    std::size_t const rule = result["ruleIndex"];
    EXPECT_EQ(run["tool"]["driver"]["rules"][rule]["id"], "dangling-refobj");
    auto const& place = result["locations"][0]["physicalLocation"];
    EXPECT_EQ(place["artifactLocation"]["uri"], "a%20model.xml");
    EXPECT_EQ(place["region"]["startLine"], 2);
}

TEST(Validate, ListsTheRules) {
    ToolResult const result = ToolFolder().Run({"validate", "--list-rules"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("\nendless-shortcut "));
}

constexpr char const* misspelt = "<model><namespace name='A'>\n<querySubjct name='B'/>\n"
                                 "<queryItem name='C' usage='facts'/></namespace></model>";

TEST(Validate, ObeysTheRulesBesideTheFile) {
    ToolFolder const folder;
    folder.Write("sub/m.xml", misspelt);
    folder.Write(".vexma.yaml", "misspelt-class: error"); // the nearer one counts alone
    folder.Write("sub/.vexma.yaml", "unknown-usage: off");
    ToolResult const result = folder.Run({"validate", "sub/m.xml"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "sub/m.xml:2:24: warning: the class is \"querySubjct\"; did you mean "
                          "querySubject? [misspelt-class]\n");
    EXPECT_EQ(result.error, "vexma: errors: 0, warnings: 1, switched off by sub/.vexma.yaml: 1\n");
}

TEST(Validate, ObeysTheRulesOfTheCurrentFolder) {
    ToolFolder const folder;
    folder.Write("sub/m.xml", misspelt);
    folder.Write(".vexma.yaml", "misspelt-class: error\nunknown-usage: note");
    ToolResult const result = folder.Run({"validate", "sub/m.xml"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("errors: 1, warnings: 0, notes: 1"));
}

TEST(Validate, ObeysTheRulesThatItIsGivenAndNoOthers) {
    ToolFolder const folder;
    folder.Write("m.xml", misspelt);
    folder.Write(".vexma.yaml", "misspelt-class: error");
    folder.Write("ours.yaml", "misspelt-class: off\nunknown-usage: off");
    ToolResult const result = folder.Run({"validate", "m.xml", "--rules", "ours.yaml", "--strict"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "vexma: errors: 0, warnings: 0, switched off by ours.yaml: 2\n");
}

TEST(Validate, ReadsNothingByRulesThatItCannotRead) {
    ToolFolder const folder;
    folder.Write("m.xml", misspelt);
    folder.Write(".vexma.yaml", "unknown-usages: off");
    ToolResult const result = folder.Run({"validate", "m.xml"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_EQ(result.error, "vexma: .vexma.yaml:1:1: there is no rule \"unknown-usages\"; did you "
                            "mean unknown-usage?\n");
    EXPECT_THAT(folder.Run({"validate", "m.xml", "--rules", "none.yaml"}).error,
                HasSubstr("none.yaml: cannot be opened"));
}

TEST(Validate, GoesThroughSeveralFiles) {
    ToolFolder const folder;
    folder.Write("a.xml", lost);
    folder.Write("c.xml", "<catalog><model path='/content/a' file='a.xml'/></catalog>");
    ToolResult const result = folder.Run({"validate", "a.xml", "none.xml", "c.xml"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 2);
    EXPECT_THAT(result.error, HasSubstr("none.xml: cannot be opened"));
    EXPECT_THAT(result.error, HasSubstr("errors: 1, warnings: 2"));
    auto const json = nlohmann::json::parse(
        folder.Run({"validate", "a.xml", "none.xml", "--format", "json"}).out);
    EXPECT_EQ(json["findings"][1]["rule"], "unreadable");
    EXPECT_EQ(json["findings"][1]["file"], "none.xml");
}

TEST(Validate, TakesAFileInBracketsForOneFile) {
    ToolFolder const folder;
    folder.Write("[a]", lost);
    EXPECT_THAT(folder.Run({"validate", "small.model.xml", "[a]"}).out, HasSubstr("\n[a]:2:"));
}

TEST(Validate, RefusesAnOptionThatItLacks) {
    ToolResult const result = ToolFolder().Run({"validate", "small.model.xml", "--stict"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("there is no option --stict"));
}

TEST(Validate, SaysTheSumLast) {
    ToolFolder const folder;
    folder.Write("m.xml", lost);
    ToolResult const result = folder.RunShell("\"$VEXMA\" validate m.xml 2>&1");
    EXPECT_THAT(result.out, StartsWith("m.xml:2:"));
    EXPECT_THAT(result.out, testing::EndsWith("vexma: errors: 0, warnings: 1\n"));
}

TEST(Validate, ColoursFindingsOnATerminalAlone) {
    ToolFolder const folder;
    folder.Write("m.xml", lost);
    constexpr char const* onTerminal =
        "TERM=xterm script -qc '\"$VEXMA\" validate m.xml' /dev/null";
    EXPECT_THAT(folder.RunShell(std::string("unset NO_COLOR; export VEXMA; ") + onTerminal).out,
                HasSubstr("\033[33mwarning\033[0m: "));
    EXPECT_THAT(folder.RunShell(std::string("export VEXMA NO_COLOR=1; ") + onTerminal).out,
                testing::Not(HasSubstr("\033[33m")));
    EXPECT_THAT(folder.Run({"validate", "m.xml"}).out, testing::Not(HasSubstr("\033")));
}

TEST(Validate, ReadsStandardInput) {
    ToolResult const result =
        ToolFolder().Run({"validate", "-"}, "<!-- hm -->\n<catalog><x/></catalog>");
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, StartsWith("standard input:2:"));
}

TEST(Validate, SaysWhenTheFileCannotBeRead) {
    ToolResult const result = ToolFolder().Run({"validate", "none.xml"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("none.xml: cannot be opened"));
}

constexpr char const* unfinishedText =
    "error: not finished, so not everything is known: the deadline";

TEST(Validate, IsNotFinishedWhenNoTimeIsLeft) {
    ToolFolder const folder;
    folder.Write("sound.model.xml", "<model><namespace name='A'/></model>");
    folder.Write("sound.catalog.xml",
                 "<catalog><model path='/content/a' file='sound.model.xml'/></catalog>");
    for (char const* const file : {"sound.model.xml", "sound.catalog.xml"}) {
        ToolResult const text = folder.Run({"validate", file, "--deadline", "1e-9"});
        EXPECT_EQ(text.status, 5);
        EXPECT_THAT(text.out, HasSubstr(unfinishedText));
        EXPECT_THAT(text.out, HasSubstr("[unfinished]\n"));
        EXPECT_THAT(text.error, HasSubstr(", not finished: 1"));
        for (char const* const format : {"json", "sarif"}) {
            ToolResult const told =
                folder.Run({"validate", file, "--deadline", "1e-9", "--format", format});
            EXPECT_EQ(told.status, 5);
            EXPECT_TRUE(nlohmann::json::accept(told.out));
            EXPECT_THAT(told.out, HasSubstr("\"unfinished\""));
        }
    }
    EXPECT_EQ(folder.Run({"validate", "sound.model.xml", "--deadline", "1e9"}).status, 0);
}

TEST(Validate, TellsOfEveryFileThatIsNotFinished) {
    ToolFolder const folder;
    folder.Write("a.xml", "<model><namespace name='A'/></model>");
    folder.Write("b.xml", "<model><namespace name='B'/></model>");
    ToolResult const result = folder.Run({"validate", "a.xml", "b.xml", "--deadline", "1e-9"});
    EXPECT_EQ(result.status, 5);
    EXPECT_THAT(result.out, HasSubstr("a.xml: " + std::string(unfinishedText)));
    EXPECT_THAT(result.out, HasSubstr("b.xml: " + std::string(unfinishedText)));
    EXPECT_THAT(result.error, HasSubstr(", not finished: 2"));
}

TEST(Validate, EndsWithStatusThreeWhenSomethingIsWrongBesidesWhatIsNotFinished) {
    ToolFolder const folder;
    folder.Write("a.xml", "<model><namespace name='A'/></model>");
    EXPECT_EQ(folder.Run({"validate", "none.xml", "a.xml", "--deadline", "1e-9"}).status, 3);
}

TEST(Validate, KeepsNoRuleFileFromTellingThatItIsNotFinished) {
    ToolFolder const folder;
    folder.Write("a.xml", "<model><namespace name='A'/></model>");
    ToolResult const result =
        folder.Run({"validate", "a.xml", "--rules", "-", "--deadline", "1e-9"}, "unfinished: off");
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("stays an error"));
}

/// The model is a pipe, which is opened while the catalogue is checked.
TEST(Validate, EndsTheCheckOfAFileAtAnInterruptAndGoesOnWithTheNext) {
    ToolFolder const folder;
    folder.Write("c.xml", "<catalog><model path='/content/a' file='pipe'/></catalog>");
    folder.Write("bad.xml", "<model><x id='a'/><x id='a'/></model>");
    ToolResult const result = folder.RunShell(
        "mkfifo pipe; \"$VEXMA\" validate c.xml bad.xml > found & pid=$!; exec 3> pipe; "
        "kill -INT $pid; echo '<model/>' >&3; exec 3>&-; wait $pid; echo $?; cat found");
    EXPECT_THAT(result.out, StartsWith("3\nc.xml: error: not finished, so not everything is "
                                       "known: the call was cancelled"));
    EXPECT_THAT(result.out, HasSubstr("bad.xml:1:"));
    EXPECT_THAT(result.error, HasSubstr("errors: 2, warnings: 0, not finished: 1"));
}

} // namespace
