#include "apps/vexma/CommandTree.h"

#include <CLI/CLI.hpp>

namespace vex {

std::vector<CLI::App const*> commandsOf(CLI::App const& program) {
    return program.get_subcommands([](CLI::App const* /*any*/) { return true; });
}

std::vector<CLI::Option const*> optionsOf(CLI::App const& command) {
    return command.get_options([](CLI::Option const* option) { return option->nonpositional(); });
}

std::vector<std::string> namesOf(CLI::Option const& option) {
    std::vector<std::string> names;
    for (std::string const& name : option.get_snames()) {
        names.push_back('-' + name);
    }
    for (std::string const& name : option.get_lnames()) {
        names.push_back("--" + name);
    }
    return names;
}

OptionValue valueOf(CLI::Option const& option) {
    OptionValue value;
    value.isTaken = option.get_items_expected_max() != 0;
    std::string const type = option.get_type_name(); // FORMAT:{text,json}
    value.word = type.substr(0, type.find(':'));
    value.isFile = value.word == "FILE";
    std::size_t const open = type.find('{');
    std::size_t const close = type.find('}');
    if (open != std::string::npos && close != std::string::npos) {
        value.choices = CLI::detail::split(type.substr(open + 1, close - open - 1), ',');
    }
    return value;
}

} // namespace vex
