#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

TEST(FailureText, IsToldWithoutItsNumberAndFunctionUnlessVerbose) {
    std::vector<std::string> const asked{"metadata", "small.model.xml", "--start", "[X]"};
    std::string const shown = ToolFolder().Run(asked).error;
    EXPECT_THAT(shown, HasSubstr("No object named \"X\" was found"));
    EXPECT_THAT(shown, Not(HasSubstr("failure")));
    EXPECT_THAT(shown, Not(HasSubstr("VexMDMa")));
    std::vector<std::string> verbose = asked;
    verbose.emplace_back("--verbose");
    EXPECT_THAT(ToolFolder().Run(verbose).error,
                HasSubstr("(failure 1171025905 of VexMDMaProviderR::ProcessRequest)"));
}

TEST(FailureText, IsToldWithoutInternalsByEveryCommand) {
    for (char const* const command : {"metadata", "tree", "verify", "diff"}) {
        std::vector<std::string> arguments = ToolFolder::As(command, "bob");
        if (std::string(command) == "diff") {
            arguments.insert(arguments.end(), {"--other-user", "ann"});
        }
        ToolResult const result = ToolFolder().Run(arguments);
        EXPECT_NE(result.status, 0) << command;
        std::string const all = result.out + result.error;
        EXPECT_THAT(all, HasSubstr("The user has no security view")) << command;
        for (char const* const internal : {"failure ", "VexM", "1170699671", "::"}) {
            EXPECT_THAT(all, Not(HasSubstr(internal))) << command;
        }
    }
    for (char const* const command : {"access", "explain"}) {
        ToolResult const result = ToolFolder().Run(ToolFolder::As(command, "bob", {"q1"}));
        EXPECT_EQ(result.status, 1) << command;
        EXPECT_THAT(result.out + result.error, Not(HasSubstr("::"))) << command;
    }
}

} // namespace
