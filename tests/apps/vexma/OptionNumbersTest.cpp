#include "tests/apps/vexma/ToolRun.h"

#include <regex>
#include <set>
#include <sstream>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsSupersetOf;

struct NumericOption {
    std::string command;
    std::string name;
};

/// The first words of the lines of a help behind that title.
std::vector<std::string> commandsOf(std::string const& help) {
    std::istringstream lines(help.substr(help.find("\nSubcommands:\n") + 1));
    std::vector<std::string> commands;
    std::string line;
    std::getline(lines, line); // the title
    std::regex const entry("  ([a-z]+) .*");
    for (std::smatch found; std::getline(lines, line) && !line.empty();) {
        if (std::regex_match(line, found, entry)) {
            commands.push_back(found[1]);
        }
    }
    return commands;
}

/// Every option of every command behind which a number stands, as the help tells it.
std::vector<NumericOption> numericOptions() {
    ToolFolder const folder;
    std::vector<NumericOption> options;
    std::regex const entry("(--[a-z-]+) (N|SECONDS)\\b");
    for (std::string const& command : commandsOf(folder.Run({"--help"}).out)) {
        std::string const help = folder.Run({command, "--help"}).out;
        for (std::sregex_iterator at(help.begin(), help.end(), entry), end; at != end; ++at) {
            options.push_back({command, (*at)[1]});
        }
    }
    return options;
}

TEST(OptionNumbers, OfEveryCommandAreKnownToTheTestsHere) {
    std::set<std::string> names;
    for (NumericOption const& option : numericOptions()) {
        names.insert(option.command + ' ' + option.name);
    }
    EXPECT_THAT(names,
                IsSupersetOf({"metadata --depth", "metadata --max-elements", "metadata --max-bytes",
                              "metadata --deadline", "metadata --max-request",
                              "metadata --max-model", "metadata --max-catalog", "access --mode",
                              "tree --depth", "session --max-values", "validate --max-model",
                              "verify --max-accepted", "diff --deadline", "who --deadline",
                              "matrix --max-elements", "explain --mode"}));
}

TEST(OptionNumbers, ThatAreNegativeTooLargeOrNoneAreWrongUsageForEveryOption) {
    ToolFolder const folder;
    for (NumericOption const& option : numericOptions()) {
        for (char const* const bad : {"-1", "18446744073709551616", "nan", "inf", "-inf", "1x", "",
                                      "0x10", " 1", "1e400"}) {
            // 2^64 seconds are a deadline like any other.
            bool const isTime =
                option.name == "--deadline" && bad == std::string("18446744073709551616");
            std::string const given = option.name + '=' + bad;
            std::vector<std::string> arguments{option.command, given, "small.model.xml"};
            if (option.command == "import") { // it is told first what the file is
                arguments = {option.command, "tabular", "small.model.xml", given};
            }
            if (option.command == "policy") {
                arguments = {option.command, "show", given};
            }
            if (option.command == "translate") { // what to do
                arguments = {option.command, "export", "small.model.xml", given};
            }
            ToolResult const result = folder.Run(arguments);
            if (!isTime) {
                EXPECT_EQ(result.status, 2) << option.command << ' ' << option.name << '=' << bad;
                EXPECT_EQ(result.out, "");
                EXPECT_THAT(result.error, HasSubstr(option.name));
            }
        }
    }
}

TEST(OptionNumbers, AreToldWithTheRangeThatIsWanted) {
    ToolFolder const folder;
    auto const complaint = [&](char const* option) {
        return folder.Run({"metadata", "small.model.xml", option}).error;
    };
    EXPECT_THAT(complaint("--max-elements=1"),
                HasSubstr("\"1\" is not a whole number from 2 to 18446744073709551615"));
    EXPECT_THAT(complaint("--max-request=0"), HasSubstr("\"0\" is not a whole number from 1 to"));
    EXPECT_THAT(complaint("--depth=-1"), HasSubstr("\"-1\" is not a whole number from 0 to"));
    EXPECT_THAT(complaint("--deadline=0"), HasSubstr("\"0\" is not a number above 0"));
}

TEST(OptionNumbers, InRangeAreTaken) {
    ToolFolder const folder;
    for (char const* const good :
         {"--depth=0", "--depth=9223372036854775807", "--max-elements=18446744073709551615",
          "--max-bytes=0", "--deadline=1e3", "--deadline=18446744073709551616",
          "--max-request=18446744073709551615", "--max-model=1000000"}) {
        EXPECT_EQ(folder.Run({"metadata", "small.model.xml", good}).status, 0) << good;
    }
}

} // namespace
