#include "apps/vexma/CommandTree.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/SourceOptions.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <memory>

#include <CLI/CLI.hpp>

namespace vex {

namespace {

/// Text that the formatter of manual pages takes as it is.
std::string roff(std::string const& text) {
    std::string result;
    bool atLineStart = true;
    for (char const character : text) {
        if (atLineStart && (character == '.' || character == '\'')) {
            result += "\\&";
        }
        if (character == '\\') {
            result += "\\e";
        } else if (character == '-') {
            result += "\\-";
        } else {
            result += character;
        }
        atLineStart = character == '\n';
    }
    return result;
}

std::string pageName(CLI::App const& command) {
    CLI::App const* const program = command.get_parent();
    return (program == nullptr ? "" : program->get_name() + '-') + command.get_name();
}

std::string inCapitals(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char character) { return std::toupper(character); });
    return text;
}

void writeOption(CLI::Option const& option, std::ostream& out) {
    out << ".TP\n";
    char const* separator = "";
    for (std::string const& name : namesOf(option)) {
        out << separator << "\\fB" << roff(name) << "\\fR";
        separator = ", ";
    }
    OptionValue const value = valueOf(option);
    if (option.get_positional()) {
        out << "\\fI" << roff(option.get_name(true)) << "\\fR";
    } else if (value.isTaken) {
        out << " \\fI" << roff(value.word) << "\\fR";
    }
    out << '\n' << roff(option.get_description());
    if (!value.choices.empty()) {
        out << " (" << roff(CLI::detail::join(value.choices, ", ")) << ')';
    }
    if (!option.get_default_str().empty()) {
        out << " (default: " << roff(option.get_default_str()) << ')';
    }
    out << '\n';
}

void writeOptions(CLI::App const& command, std::ostream& out) {
    for (std::string const& group : command.get_groups()) {
        std::vector<CLI::Option const*> const options =
            command.get_options([&](CLI::Option const* option) {
                return option->get_group() == group && !option->get_positional();
            });
        if (!options.empty()) {
            out << ".SH " << roff(inCapitals(group)) << '\n';
        }
        for (CLI::Option const* const option : options) {
            writeOption(*option, out);
        }
    }
}

void writePage(CLI::App const& command, std::ostream& out) {
    CLI::App const* const program = command.get_parent();
    std::vector<CLI::Option const*> const arguments =
        command.get_options([](CLI::Option const* option) { return option->get_positional(); });
    std::vector<CLI::App const*> const commands = commandsOf(command);
    out << ".TH " << pageName(command) << " 1 \"\" \"vexma " VEX_VERSION "\"\n.SH NAME\n"
        << roff(pageName(command)) << " \\- " << roff(command.get_description())
        << "\n.SH SYNOPSIS\n\\fB" << (program == nullptr ? "" : program->get_name() + ' ')
        << command.get_name() << "\\fR [OPTIONS]" << (commands.empty() ? "" : " COMMAND ...");
    for (CLI::Option const* const argument : arguments) {
        out << " [\\fI" << roff(argument->get_name(true)) << "\\fR]";
    }
    out << '\n' << (arguments.empty() ? "" : ".SH ARGUMENTS\n");
    for (CLI::Option const* const argument : arguments) {
        writeOption(*argument, out);
    }
    writeOptions(command, out);
    out << (commands.empty() ? "" : ".SH COMMANDS\n");
    for (CLI::App const* const each : commands) {
        out << ".TP\n\\fB" << roff(each->get_name()) << "\\fR\n"
            << roff(each->get_description()) << '\n';
    }
    out << ".SH NOTES\n.nf\n" << roff(command.get_footer()) << "\n.fi\n.SH SEE ALSO\n";
    if (program != nullptr) {
        out << "\\fB" << program->get_name() << "\\fR(1)\n";
    }
    char const* separator = "";
    for (CLI::App const* const each : commands) {
        out << separator << "\\fB" << roff(pageName(*each)) << "\\fR(1)";
        separator = ",\n";
    }
    out << (commands.empty() ? "" : "\n");
}

struct ManCommand {
    std::string about;
    std::string folder;

    int Run(CLI::App const& program, Console& console) const {
        std::vector<CLI::App const*> pages = commandsOf(program);
        pages.insert(pages.begin(), &program);
        if (!folder.empty()) {
            return writeAll(pages, console);
        }
        for (CLI::App const* const page : pages) {
            if (page->get_name() == (about.empty() ? program.get_name() : about)) {
                writePage(*page, console.out());
                return Done;
            }
        }
        throw UsageException("there is no command \"" + about + "\"; \"vexma --help\" lists them");
    }

    int writeAll(std::vector<CLI::App const*> const& pages, Console& console) const {
        for (CLI::App const* const page : pages) {
            std::filesystem::path const file =
                std::filesystem::path(folder) / (pageName(*page) + ".1");
            std::ofstream out(file, std::ios::binary);
            writePage(*page, out);
            out.flush();
            if (!out) {
                console.complain("the page cannot be written to " + file.string());
                return Refused;
            }
        }
        return Done;
    }
};

} // namespace

CommandRun addManCommand(CLI::App& command) {
    auto const man = std::make_shared<ManCommand>();
    command.add_option("COMMAND", man->about, "The command to tell about; without it all in short");
    command.add_option("--into", man->folder, "Write every page into this folder instead")
        ->type_name("FOLDER");
    command.footer(R"(Examples:
  vexma man metadata | man -l -
  vexma man --into man/man1)");
    return [man, &program = *command.get_parent()](Console& console) {
        return man->Run(program, console);
    };
}

} // namespace vex
