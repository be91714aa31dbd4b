#include "apps/vexma/CommandSyntax.h"

#include <algorithm>
#include <sstream>
#include <type_traits>
#include <utility>

namespace vex {

namespace {

std::vector<OptionSyntax const*> optionsThat(CommandSyntax const& command, bool areArguments) {
    std::vector<OptionSyntax const*> found;
    for (OptionSyntax const& option : command.options) {
        if (option.isArgument() == areArguments) {
            found.push_back(&option);
        }
    }
    return found;
}

struct TextOfTarget {
    template <typename Value> std::string operator()(Value* target) const {
        if constexpr (std::is_same_v<Value, std::string>) {
            return *target;
        } else if constexpr (std::is_same_v<Value, long> || std::is_same_v<Value, std::size_t>) {
            return std::to_string(*target);
        } else {
            return "";
        }
    }
    std::string operator()(std::monostate /*none*/) const { return ""; }
};

} // namespace

std::vector<std::string> OptionSyntax::names() const {
    std::vector<std::string> each;
    std::istringstream list(name);
    for (std::string one; std::getline(list, one, ',');) {
        each.push_back(one);
    }
    return each;
}

bool OptionSyntax::takesValue() const {
    return !std::holds_alternative<std::monostate>(into) && !std::holds_alternative<bool*>(into);
}

CommandSyntax::CommandSyntax(std::string syntaxName, std::string syntaxHelp)
    : name(std::move(syntaxName)), help(std::move(syntaxHelp)) {
    add({.name = "-h,--help", .help = "Print this help message and exit"});
}

OptionSyntax& CommandSyntax::add(OptionSyntax option) {
    if (option.showsDefault) {
        option.defaultText = std::visit(TextOfTarget(), option.into);
    }
    return options.emplace_back(std::move(option));
}

void CommandSyntax::addVersion(std::string text) {
    version = std::move(text);
    add({.name = "--version", .help = "Display program version information and exit"});
}

CommandSyntax& CommandSyntax::addCommand(std::string const& commandName,
                                         std::string const& commandHelp) {
    CommandSyntax& command = commands.emplace_back(commandName, commandHelp);
    command.program = this;
    return command;
}

std::vector<OptionSyntax const*> CommandSyntax::arguments() const {
    return optionsThat(*this, true);
}

std::vector<OptionSyntax const*> CommandSyntax::namedOptions() const {
    return optionsThat(*this, false);
}

std::vector<std::string> CommandSyntax::groups() const {
    std::vector<std::string> found;
    for (OptionSyntax const& option : options) {
        if (std::find(found.begin(), found.end(), option.group) == found.end()) {
            found.push_back(option.group);
        }
    }
    return found;
}

std::string joined(std::vector<std::string> const& texts, char const* separator) {
    std::string whole;
    for (std::string const& text : texts) {
        whole += (&text == &texts.front() ? "" : separator) + text;
    }
    return whole;
}

} // namespace vex
