// vexma --trace: what the plug-in traces, beside the results.

#include "tests/apps/vexma/ToolRun.h"

#include <gtest/gtest.h>

namespace {

constexpr char TraceLine[] = "********VexMAActionPlugin::DoAction \n";

TEST(Trace, ShowsALineForEachCallOnStandardErrorBesideTheResults) {
    ToolFolder const folder;
    for (std::vector<std::string> const& command :
         {std::vector<std::string>{"metadata", "small.model.xml"},
          std::vector<std::string>{"tree", "small.model.xml"},
          std::vector<std::string>{"access", "small.model.xml", "q1"}}) {
        ToolResult const plain = folder.Run(command);
        EXPECT_EQ(plain.error, "") << command[0];
        std::vector<std::string> traced = command;
        traced.push_back("--trace");
        ToolResult const result = folder.Run(traced);
        EXPECT_EQ(result.status, 0) << command[0];
        EXPECT_EQ(result.out, plain.out) << command[0];
        EXPECT_EQ(result.error, TraceLine) << command[0];
    }
}

TEST(Trace, ShowsEachActionOfASession) {
    ToolResult const result =
        ToolFolder().Run({"session", "small.model.xml", "--trace"},
                         "{\"action\": 1, \"in\": []}\n{\"action\": 2, \"in\": []}\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, std::string(TraceLine) + TraceLine);
}

} // namespace
