#include "apps/vexma/Commands.h"
#include "apps/vexma/SourceOptions.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <memory>

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

std::string pageName(CommandSyntax const& command) {
    return (command.program == nullptr ? "" : command.program->name + '-') + command.name;
}

std::string inCapitals(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char character) { return std::toupper(character); });
    return text;
}

void writeOption(OptionSyntax const& option, std::ostream& out) {
    out << ".TP\n";
    if (option.isArgument()) {
        out << "\\fI" << roff(option.name) << "\\fR";
    } else {
        char const* separator = "";
        for (std::string const& name : option.names()) {
            out << separator << "\\fB" << roff(name) << "\\fR";
            separator = ", ";
        }
        if (option.takesValue()) {
            out << " \\fI" << roff(option.word) << "\\fR";
        }
    }
    out << '\n' << roff(option.help);
    if (!option.choices.empty()) {
        out << " (" << roff(joined(option.choices, ", ")) << ')';
    }
    if (!option.defaultText.empty()) {
        out << " (default: " << roff(option.defaultText) << ')';
    }
    out << '\n';
}

void writeOptions(CommandSyntax const& command, std::ostream& out) {
    for (std::string const& group : command.groups()) {
        char const* heading = ".SH ";
        for (OptionSyntax const* const option : command.namedOptions()) {
            if (option->group != group) {
                continue;
            }
            if (*heading != 0) {
                out << heading << roff(inCapitals(group)) << '\n';
                heading = "";
            }
            writeOption(*option, out);
        }
    }
}

void writePage(CommandSyntax const& command, std::ostream& out) {
    CommandSyntax const* const program = command.program;
    std::vector<OptionSyntax const*> const arguments = command.arguments();
    std::list<CommandSyntax> const& commands = command.commands;
    out << ".TH " << pageName(command) << " 1 \"\" \"vexma " VEX_VERSION "\"\n.SH NAME\n"
        << roff(pageName(command)) << " \\- " << roff(command.help) << "\n.SH SYNOPSIS\n\\fB"
        << (program == nullptr ? "" : program->name + ' ') << command.name << "\\fR [OPTIONS]"
        << (commands.empty() ? "" : " COMMAND ...");
    for (OptionSyntax const* const argument : arguments) {
        out << " [\\fI" << roff(argument->name) << "\\fR]";
    }
    out << '\n' << (arguments.empty() ? "" : ".SH ARGUMENTS\n");
    for (OptionSyntax const* const argument : arguments) {
        writeOption(*argument, out);
    }
    writeOptions(command, out);
    out << (commands.empty() ? "" : ".SH COMMANDS\n");
    for (CommandSyntax const& each : commands) {
        out << ".TP\n\\fB" << roff(each.name) << "\\fR\n" << roff(each.help) << '\n';
    }
    out << ".SH NOTES\n.nf\n" << roff(command.epilog) << "\n.fi\n.SH SEE ALSO\n";
    if (program != nullptr) {
        out << "\\fB" << program->name << "\\fR(1)\n";
    }
    char const* separator = "";
    for (CommandSyntax const& each : commands) {
        out << separator << "\\fB" << roff(pageName(each)) << "\\fR(1)";
        separator = ",\n";
    }
    out << (commands.empty() ? "" : "\n");
}

struct ManCommand {
    std::string about;
    std::string folder;

    int run(CommandSyntax const& program, Console& console) const {
        std::vector<CommandSyntax const*> pages{&program};
        for (CommandSyntax const& command : program.commands) {
            pages.push_back(&command);
        }
        if (!folder.empty()) {
            return writeAll(pages, console);
        }
        for (CommandSyntax const* const page : pages) {
            if (page->name == (about.empty() ? program.name : about)) {
                writePage(*page, console.out());
                return Done;
            }
        }
        throw UsageException("there is no command \"" + about + "\"; \"vexma --help\" lists them");
    }

    int writeAll(std::vector<CommandSyntax const*> const& pages, Console& console) const {
        for (CommandSyntax const* const page : pages) {
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

CommandRun addManCommand(CommandSyntax& command) {
    auto const man = std::make_shared<ManCommand>();
    command.add({.name = "COMMAND",
                 .into = &man->about,
                 .help = "The command to tell about; without it all in short"});
    command.add({.name = "--into",
                 .into = &man->folder,
                 .help = "Write every page into this folder instead",
                 .word = "FOLDER"});
    command.epilog = R"(Examples:
  vexma man metadata | man -l -
  vexma man --into man/man1)";
    return
        [man, &program = *command.program](Console& console) { return man->run(program, console); };
}

} // namespace vex
