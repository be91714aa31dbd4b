// What is left of results that could not be written to their end.

#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// A model whose answers have some 300 KB.
std::string largeModel() {
    std::string model = "<model><namespace name='N' id='n'>";
    for (int index = 0; index < 4'000; ++index) {
        std::string const number = std::to_string(index);
        model += "<querySubject id='q" + number + "' name='One of very many query subjects, " +
                 number + "'/>";
    }
    return model + "</namespace></model>";
}

/// The commands that fill a file.
std::vector<std::string> fillingCommands() {
    return {"metadata large.xml --depth 2 --property '*'",
            "metadata large.xml --depth 2 --property '*' --pretty",
            "tree large.xml --depth 2",
            "tree --why large.xml",
            "explain large.xml --json $(seq -f q%g 0 1500)",
            "diff large.xml small.model.xml --json"};
}

TEST(LostResults, AreTakenBackOutOfAFileThatMayNotGrow) {
    ToolFolder const folder;
    folder.Write("large.xml", largeModel());
    for (std::string const& command : fillingCommands()) {
        ToolResult const result =
            folder.RunShell("echo before > results; (ulimit -f 70; \"$VEXMA\" " + command +
                            " >> results); echo $?; cat results");
        EXPECT_THAT(result.out, testing::AnyOf("1\nbefore\n", "2\nbefore\n")) << command;
        EXPECT_THAT(result.error, StartsWith("vexma: ")) << command;
    }
}

TEST(LostResults, AreToldOfADiskThatIsFull) {
    ToolFolder const folder;
    folder.Write("large.xml", largeModel());
    for (std::string const command :
         {"metadata large.xml --depth 2", "metadata small.model.xml", "tree small.model.xml",
          "access small.model.xml q1", "validate --format json small.model.xml", "man", "--help",
          "--version", "completion bash", "verify small.model.xml"}) {
        ToolResult const result = folder.RunShell("\"$VEXMA\" " + command + " > /dev/full");
        EXPECT_NE(result.status, 0) << command;
        EXPECT_THAT(result.error, HasSubstr("vexma: the results cannot be written: No space left"))
            << command;
    }
}

TEST(LostResults, AreToldOfAStandardOutputThatIsNotThere) {
    ToolResult const result = ToolFolder().RunShell("\"$VEXMA\" metadata small.model.xml >&-");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("the results cannot be written"));
    EXPECT_EQ(ToolFolder().RunShell("\"$VEXMA\" metadata small.model.xml >&- 2>&- <&-").status, 1);
    ToolResult const silent =
        ToolFolder().RunShell("\"$VEXMA\" metadata small.model.xml --depth 1 2>&-");
    EXPECT_EQ(silent.status, 0);
    EXPECT_THAT(silent.out, StartsWith("<Response>"));
}

TEST(LostResults, LeaveTheWholeLinesOfASession) {
    ToolFolder const folder;
    folder.Write("large.xml", largeModel());
    ToolResult const result = folder.RunShell(
        "line='{\"action\": 32000, \"in\": [{\"long\": 0}, {\"string\": \"x\"}, {\"handle\": "
        "\"n\"}, {\"long\": 0}]}'; "
        "(for i in $(seq 2000); do echo \"$line\"; done) > lines; "
        "(ulimit -f 20; \"$VEXMA\" session large.xml < lines > results); echo $?; "
        "tail -c 1 results | od -An -c; sort -u results | wc -l");
    EXPECT_THAT(result.out, AllOf(StartsWith("1\n"), HasSubstr("\\n"), testing::EndsWith("\n1\n")));
}

TEST(LostResults, AreNoneOfADocumentWithoutMemoryToWriteIt) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer reserves more than these limits";
#endif
    ToolFolder const folder;
    folder.Write("large.xml", largeModel());
    bool refused = false;
    // Some of these limits end it while it reads, some while it writes.
    for (int megabytes = 60; megabytes <= 160; megabytes += 10) {
        ToolResult const result = folder.RunShell(
            "ulimit -v " + std::to_string(megabytes * 1024) +
            "; \"$VEXMA\" metadata large.xml --depth 2 --property '*' --max-elements 10000");
        if (result.status == 0) {
            EXPECT_THAT(result.out, testing::EndsWith("</Response>\n"));
        } else if (result.status != 127) { // the libraries did not fit in
            refused = true;
            EXPECT_THAT(result.out, IsEmpty()) << megabytes;
            EXPECT_THAT(result.error, Not(HasSubstr("terminate"))) << megabytes;
            EXPECT_THAT(result.status, testing::AnyOf(1, 3)) << megabytes << result.error;
        }
    }
    EXPECT_TRUE(refused);
}

} // namespace
