#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// What bash completes the last of these words to.
std::string completed(std::string const& words, int last) {
    return ToolFolder()
        .RunShell("export VEXMA; bash -c 'source <(\"$VEXMA\" completion bash); COMP_WORDS=(" +
                  words + "); COMP_CWORD=" + std::to_string(last) +
                  "; _vexma; echo \"${COMPREPLY[@]}\"'")
        .out;
}

TEST(Completion, KnowsTheCommands) {
    EXPECT_EQ(completed("vexma va", 1), "validate\n");
}

TEST(Completion, KnowsTheOptionsOfACommand) {
    EXPECT_EQ(completed("vexma metadata --pre", 2), "--pretty\n");
    EXPECT_EQ(completed("vexma access --pre", 2), "\n");
}

TEST(Completion, KnowsTheValuesOfAnOption) {
    EXPECT_EQ(completed("vexma validate --format s", 3), "sarif\n");
    EXPECT_EQ(completed("vexma completion z", 2), "zsh\n");
}

TEST(Completion, OffersFilesWhereOneIsNamed) {
    EXPECT_EQ(completed("vexma metadata --catalog small.c", 3), "small.catalog.xml\n");
    EXPECT_EQ(completed("vexma metadata small.m", 2), "small.model.xml\n");
}

TEST(Completion, LeavesWhatOnlyTheUserKnowsAlone) {
    EXPECT_EQ(completed("vexma metadata --user small.c", 3), "\n");
}

TEST(Completion, WorksInFish) {
    ToolFolder const folder;
    auto const offered = [&folder](std::string const& typed) {
        return folder
            .RunShell("PATH=$(dirname \"$VEXMA\"):$PATH HOME=. fish --no-config -c '"
                      "vexma completion fish | source; complete -C \"" +
                      typed + "\"'")
            .out;
    };
    EXPECT_THAT(offered("vexma va"), testing::StartsWith("validate\t"));
    EXPECT_THAT(offered("vexma metadata --pre"), testing::StartsWith("--pretty\t"));
    EXPECT_THAT(offered("vexma validate --format s"), testing::StartsWith("sarif\t"));
}

TEST(Completion, CanBeReadByZsh) {
    ToolFolder const folder;
    EXPECT_EQ(folder.RunShell("\"$VEXMA\" completion zsh > _vexma && zsh -f -n _vexma").status, 0);
}

TEST(Completion, IsWrittenForOtherShells) {
    EXPECT_THAT(ToolFolder().Run({"completion", "zsh"}).out, HasSubstr("#compdef vexma"));
    EXPECT_THAT(ToolFolder().Run({"completion", "fish"}).out,
                HasSubstr("__fish_seen_subcommand_from validate' -l format -x -a "
                          "'text json sarif'"));
    EXPECT_EQ(ToolFolder().Run({"completion", "cmd"}).status, 2);
}

TEST(Man, TellsWhatTheHelpTells) {
    ToolResult const result = ToolFolder().Run({"man", "validate"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("\\fB\\-\\-strict\\fR\nWarnings count as errors"));
    EXPECT_THAT(result.out, HasSubstr("\\fB\\-\\-format\\fR \\fIFORMAT\\fR"));
    EXPECT_THAT(result.out, HasSubstr("vexma validate retail.model.xml"));
}

TEST(Man, ListsTheCommands) {
    ToolResult const result = ToolFolder().Run({"man"});
    EXPECT_THAT(result.out, HasSubstr(".SH COMMANDS"));
    EXPECT_THAT(result.out, HasSubstr("vexma\\-metadata\\fR(1)"));
}

TEST(Man, WritesEveryPageIntoAFolder) {
    ToolResult const result = ToolFolder().RunShell("\"$VEXMA\" man --into . && ls");
    EXPECT_THAT(result.out, HasSubstr("vexma.1\n"));
    EXPECT_THAT(result.out, HasSubstr("vexma-session.1\n"));
}

TEST(Man, RefusesACommandThatIsNone) {
    EXPECT_EQ(ToolFolder().Run({"man", "dance"}).status, 2);
}

TEST(Suggestions, NameThePathThatMayHaveBeenMeant) {
    ToolResult const result =
        ToolFolder().Run({"metadata", "small.model.xml", "--start", "[Sales].[Ordrs]"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("did you mean [Sales].[Orders]?"));
}

TEST(Suggestions, NameTheReferenceThatMayHaveBeenMeant) {
    ToolResult const result =
        ToolFolder().Run({"tree", "small.model.xml", "--ref", "[Sales].[Orders].[Quantiti]"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("did you mean [Sales].[Orders].[Quantity]?"));
}

TEST(Suggestions, NameTheObjectThatMayHaveBeenMeant) {
    ToolResult const result = ToolFolder().Run({"access", "small.model.xml", "[Sales].[Orddrs]"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("did you mean [Sales].[Orders]?"));
}

TEST(Suggestions, AreLeftOutWhenNothingIsLikeIt) {
    ToolResult const result =
        ToolFolder().Run({"metadata", "small.model.xml", "--start", "[Moon]"});
    EXPECT_THAT(result.error, Not(HasSubstr("did you mean")));
}

TEST(Colours, AreLeftOutOfPipes) {
    ToolResult const result = ToolFolder().RunShell("TERM=xterm \"$VEXMA\" tree small.model.xml");
    EXPECT_THAT(result.out, Not(HasSubstr("\033")));
    EXPECT_THAT(result.error, IsEmpty());
}

} // namespace
