#pragma once

#include "apps/vexma/Console.h"

#include <cstddef>
#include <functional>
#include <list>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vex {

/// What a command does once the command line is read; gives the exit status.
using CommandRun = std::function<int(Console&)>;

/// Where a value goes. A flag takes none; a list gets one entry each time its
/// option is given.
using OptionTarget =
    std::variant<std::monostate, bool*, std::string*, std::vector<std::string>*, long*,
                 std::size_t*, std::optional<long>*, std::optional<double>*>;

/// An option of a command, or an argument that stands without one.
struct OptionSyntax {
    std::string name = {};  // --json; MODEL.xml, an argument; -h,--help has two
    OptionTarget into = {}; // must outlive the reading of the command line
    std::string help = {};
    std::string word = {};         // what stands behind it, for people; FILE is completed
    std::string group = "Options"; // of the help
    bool showsDefault = false;     // the help tells what the target holds at first
    bool isRequired = false;
    std::vector<std::string> choices = {};                  // when only these may stand
    std::optional<std::size_t> least = {};                  // the smallest number that may stand
    bool isPositive = false;                                // the number is above 0
    std::string (*complaint)(std::string const&) = nullptr; // about a value; "" for none
    std::string defaultText = {};                           // when the help tells it, else ""
    bool isGiven = false;                                   // once the command line is read

    bool isArgument() const { return name.front() != '-'; }
    std::vector<std::string> names() const;
    bool takesValue() const;
    bool isFile() const { return word == "FILE"; }
};

/// The program, or one of its commands: what may be written on a command line
/// and what the help, the completions and the manual pages say about it.
struct CommandSyntax {
    CommandSyntax(std::string name, std::string help);

    std::string name;
    std::string help;
    std::string epilog = {};
    std::string version = {};             // what --version says; none without
    std::list<OptionSyntax> options = {}; // in the order of the help
    std::list<CommandSyntax> commands = {};
    CommandSyntax const* program = nullptr;   // that this is a command of
    std::vector<std::string>* rest = nullptr; // takes what no option took, if anything may stand
    CommandRun run = {};

    /// What is added stays where it is.
    OptionSyntax& add(OptionSyntax option);
    void addVersion(std::string text);
    CommandSyntax& addCommand(std::string const& commandName, std::string const& commandHelp);

    std::vector<OptionSyntax const*> arguments() const;
    /// All but the arguments.
    std::vector<OptionSyntax const*> namedOptions() const;
    /// The groups of its options, in the order of their first ones.
    std::vector<std::string> groups() const;
};

/// The texts with the separator between them.
std::string joined(std::vector<std::string> const& texts, char const* separator);

} // namespace vex
