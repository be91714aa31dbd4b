#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace vex {

/// The commands of the program, in the order of its help.
std::vector<CLI::App const*> commandsOf(CLI::App const& program);

/// A command's options that are no positional arguments.
std::vector<CLI::Option const*> optionsOf(CLI::App const& command);

/// "--catalog", "-h,--help": how an option is written.
std::vector<std::string> namesOf(CLI::Option const& option);

/// What stands behind an option or in the place of an argument.
struct OptionValue {
    bool isTaken = false;             // false: a flag
    bool isFile = false;              // the name of a file
    std::string word;                 // for people, such as FILE
    std::vector<std::string> choices; // when only these may stand
};
OptionValue valueOf(CLI::Option const& option);

} // namespace vex
