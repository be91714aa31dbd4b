#include "apps/vexma/Commands.h"

#include <memory>

namespace vex {

namespace {

/// The text with a backslash before each of the characters.
std::string escaped(std::string const& text, std::string_view characters) {
    std::string result;
    for (char const character : text) {
        if (characters.find(character) != std::string_view::npos) {
            result += '\\';
        }
        result += character;
    }
    return result;
}

/// As one word of a shell.
std::string quoted(std::string const& text) {
    std::string result = "'";
    for (char const character : text) {
        result += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return result + '\'';
}

/// "--help --version metadata tree": what may follow the program's name.
std::vector<std::string> firstWords(CommandSyntax const& program) {
    std::vector<std::string> words;
    for (CommandSyntax const& command : program.commands) {
        words.push_back(command.name);
    }
    for (OptionSyntax const* const option : program.namedOptions()) {
        for (std::string const& name : option->names()) {
            words.push_back(name);
        }
    }
    return words;
}

std::vector<std::string> argumentChoices(CommandSyntax const& command) {
    std::vector<std::string> choices;
    for (OptionSyntax const* const argument : command.arguments()) {
        choices.insert(choices.end(), argument->choices.begin(), argument->choices.end());
    }
    return choices;
}

void writeBash(CommandSyntax const& program, std::ostream& out) {
    out << "_vexma() {\n"
           "  local current=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]} words=\n"
           "  COMPREPLY=()\n"
           "  if ((COMP_CWORD == 1)); then\n"
           "    COMPREPLY=($(compgen -W '"
        << joined(firstWords(program), " ")
        << "' -- \"$current\"))\n"
           "    return\n"
           "  fi\n"
           "  case $command:${COMP_WORDS[COMP_CWORD-1]} in\n";
    for (CommandSyntax const& command : program.commands) {
        for (OptionSyntax const* const option : command.namedOptions()) {
            if (!option->takesValue()) {
                continue;
            }
            std::vector<std::string> patterns;
            for (std::string const& name : option->names()) {
                patterns.push_back(command.name + ':' + name);
            }
            out << "    " << joined(patterns, "|") << ")\n";
            if (option->isFile()) {
                out << "      COMPREPLY=($(compgen -f -- \"$current\"))\n";
            } else if (!option->choices.empty()) {
                out << "      COMPREPLY=($(compgen -W '" << joined(option->choices, " ")
                    << "' -- \"$current\"))\n";
            }
            out << "      return ;;\n";
        }
    }
    out << "  esac\n"
           "  case $command in\n";
    for (CommandSyntax const& command : program.commands) {
        std::vector<std::string> words = argumentChoices(command);
        for (OptionSyntax const* const option : command.namedOptions()) {
            for (std::string const& name : option->names()) {
                words.push_back(name);
            }
        }
        out << "    " << command.name << ") words='" << joined(words, " ") << "' ;;\n";
    }
    out << "  esac\n"
           "  COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
           "  if [[ $current != -* ]]; then\n"
           "    COMPREPLY+=($(compgen -f -- \"$current\"))\n"
           "  fi\n"
           "}\n"
           "complete -o filenames -F _vexma vexma\n";
}

/// ":FILE:_files" and the like: how zsh completes a value.
std::string zshValue(OptionSyntax const& option) {
    if (!option.takesValue()) {
        return "";
    }
    std::string const action = option.isFile()          ? "_files"
                               : option.choices.empty() ? " "
                                                        : '(' + joined(option.choices, " ") + ')';
    return ':' + escaped(option.word, ":") + ':' + action;
}

void writeZsh(CommandSyntax const& program, std::ostream& out) {
    out << "#compdef vexma\n"
           "_vexma() {\n"
           "  local -a commands\n"
           "  commands=(\n";
    for (CommandSyntax const& command : program.commands) {
        out << "    " << quoted(command.name + ':' + command.help) << '\n';
    }
    out << "  )\n"
           "  if ((CURRENT == 2)); then\n"
           "    _describe command commands\n"
           "    return\n"
           "  fi\n"
           "  local command=$words[2]\n"
           "  shift words\n"
           "  ((CURRENT--))\n"
           "  case $command in\n";
    for (CommandSyntax const& command : program.commands) {
        out << "    " << command.name << ")\n      _arguments";
        for (OptionSyntax const* const option : command.namedOptions()) {
            for (std::string const& name : option->names()) {
                out << " \\\n        "
                    << quoted('*' + name + '[' + escaped(option->help, "[]:\\") + ']' +
                              zshValue(*option));
            }
        }
        std::vector<std::string> const choices = argumentChoices(command);
        out << " \\\n        "
            << quoted(choices.empty() ? "*:file:_files"
                                      : "1:argument:(" + joined(choices, " ") + ')')
            << " ;;\n";
    }
    out << "  esac\n"
           "}\n"
           "_vexma \"$@\"\n";
}

void writeFish(CommandSyntax const& program, std::ostream& out) {
    for (CommandSyntax const& command : program.commands) {
        out << "complete -c vexma -n __fish_use_subcommand -f -a " << command.name << " -d "
            << quoted(command.help) << '\n';
    }
    for (CommandSyntax const& command : program.commands) {
        std::string const start =
            "complete -c vexma -n '__fish_seen_subcommand_from " + command.name + "'";
        for (OptionSyntax const* const option : command.namedOptions()) {
            out << start;
            for (std::string const& name : option->names()) {
                bool const isLong = name.starts_with("--");
                out << (isLong ? " -l " : " -s ") << name.substr(isLong ? 2 : 1);
            }
            if (option->takesValue()) {
                out << (option->isFile() ? " -r -F" : " -x");
            }
            if (!option->choices.empty()) {
                out << " -a " << quoted(joined(option->choices, " "));
            }
            out << " -d " << quoted(option->help) << '\n';
        }
        std::vector<std::string> const choices = argumentChoices(command);
        if (!choices.empty()) {
            out << start << " -f -a " << quoted(joined(choices, " ")) << '\n';
        }
    }
}

struct Shell {
    char const* name;
    void (*write)(CommandSyntax const& program, std::ostream& out);
};
constexpr Shell shells[] = {{"bash", &writeBash}, {"zsh", &writeZsh}, {"fish", &writeFish}};

} // namespace

CommandRun addCompletionCommand(CommandSyntax& command) {
    auto const asked = std::make_shared<std::string>();
    std::vector<std::string> names;
    for (Shell const& shell : shells) {
        names.emplace_back(shell.name);
    }
    command.add({.name = "SHELL",
                 .into = asked.get(),
                 .help = "The shell",
                 .isRequired = true,
                 .choices = names});
    command.epilog = R"(An installation puts the scripts where the shells look for them.

Examples:
  source <(vexma completion bash)
  vexma completion fish > ~/.config/fish/completions/vexma.fish)";
    return [asked, &program = *command.program](Console& console) {
        for (Shell const& shell : shells) {
            if (*asked == shell.name) {
                shell.write(program, console.out());
            }
        }
        return Done;
    };
}

} // namespace vex
