#include "apps/vexma/CommandLine.h"

#include "apps/vexma/OptionNumber.h"

#include <type_traits>

#include <CLI/CLI.hpp>

namespace vex {

namespace {

/// Adds an option whose values go to its target.
struct Adding {
    CLI::App& parser;
    std::string const& name;
    std::string const& help;

    CLI::Option* operator()(std::monostate /*none*/) const { return nullptr; }
    CLI::Option* operator()(bool* target) const { return parser.add_flag(name, *target, help); }
    CLI::Option* operator()(std::vector<std::string>* target) const {
        // Without extra arguments, a text in brackets stays the one text it is.
        return parser.add_option(name, *target, help)->allow_extra_args(false);
    }
    template <typename Value> CLI::Option* operator()(Value* target) const {
        if constexpr (std::is_same_v<Value, std::string>) {
            return parser.add_option(name, *target, help);
        } else {
            auto const set = [target](std::string const& text) { setNumber(target, text); };
            return parser.add_option_function<std::string>(name, set, help);
        }
    }
};

void addChecks(OptionSyntax const& option, CLI::Option& parsed) {
    if (takesNumber(option.into)) {
        parsed.check(CLI::Validator(
            [&option](std::string const& text) { return complaintAboutNumber(option, text); }, ""));
    }
    if (!option.choices.empty()) {
        parsed.check(CLI::IsMember(option.choices));
    }
    if (option.complaint != nullptr) {
        parsed.check(CLI::Validator(option.complaint, ""));
    }
}

/// Options of the parser with those that they are made from.
using ParsedOptions = std::vector<std::pair<CLI::Option const*, OptionSyntax*>>;

void addOptions(CommandSyntax& command, CLI::App& parser, ParsedOptions& all) {
    for (OptionSyntax& option : command.options) {
        CLI::Option* const parsed =
            std::visit(Adding{parser, option.name, option.help}, option.into);
        if (parsed == nullptr) { // --help and --version, which the parser has itself
            continue;
        }
        if (!option.word.empty()) {
            parsed->type_name(option.word);
        }
        parsed->default_str(option.defaultText);
        parsed->required(option.isRequired);
        parsed->group(option.group);
        addChecks(option, *parsed);
        all.emplace_back(parsed, &option);
    }
    parser.footer(command.epilog);
    parser.allow_extras(command.rest != nullptr);
}

} // namespace

CommandLine readCommandLine(CommandSyntax& program, int argc, char const* const* argv,
                            Console& console) {
    CommandLine result;
    ParsedOptions options;
    CLI::App parser(program.help, program.name);
    parser.require_subcommand(1);
    parser.set_version_flag("--version", program.version);
    addOptions(program, parser, options);
    for (CommandSyntax& command : program.commands) {
        CLI::App& commandParser = *parser.add_subcommand(command.name, command.help);
        addOptions(command, commandParser, options);
        commandParser.callback([&result, &command, &commandParser] {
            result.command = &command;
            if (command.rest != nullptr) {
                *command.rest = commandParser.remaining();
            }
        });
    }
    try {
        parser.parse(argc, argv);
    } catch (CLI::ParseError const& end) { // a request for help ends the parse too
        if (end.get_exit_code() != 0) {
            console.complain(std::string(end.what()) + "; see --help");
            return {nullptr, WrongUsage};
        }
        parser.exit(end, console.out(), console.out());
        return {nullptr, Done};
    }
    for (auto const& [parsed, option] : options) {
        option->isGiven = !parsed->empty();
    }
    return result;
}

} // namespace vex
