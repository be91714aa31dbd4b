#include "apps/vexma/CommandTree.h"
#include "apps/vexma/Commands.h"

#include <memory>

#include <CLI/CLI.hpp>

namespace vex {

namespace {

std::string join(std::vector<std::string> const& texts, char const* separator) {
    return CLI::detail::join(texts, separator);
}

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
std::vector<std::string> firstWords(CLI::App const& program) {
    std::vector<std::string> words;
    for (CLI::App const* const command : commandsOf(program)) {
        words.push_back(command->get_name());
    }
    for (CLI::Option const* const option : optionsOf(program)) {
        for (std::string const& name : namesOf(*option)) {
            words.push_back(name);
        }
    }
    return words;
}

std::vector<std::string> argumentChoices(CLI::App const& command) {
    std::vector<std::string> choices;
    for (CLI::Option const* const argument :
         command.get_options([](CLI::Option const* each) { return each->get_positional(); })) {
        std::vector<std::string> const more = valueOf(*argument).choices;
        choices.insert(choices.end(), more.begin(), more.end());
    }
    return choices;
}

void writeBash(CLI::App const& program, std::ostream& out) {
    out << "_vexma() {\n"
           "  local current=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]} words=\n"
           "  COMPREPLY=()\n"
           "  if ((COMP_CWORD == 1)); then\n"
           "    COMPREPLY=($(compgen -W '"
        << join(firstWords(program), " ")
        << "' -- \"$current\"))\n"
           "    return\n"
           "  fi\n"
           "  case $command:${COMP_WORDS[COMP_CWORD-1]} in\n";
    for (CLI::App const* const command : commandsOf(program)) {
        for (CLI::Option const* const option : optionsOf(*command)) {
            OptionValue const value = valueOf(*option);
            if (!value.isTaken) {
                continue;
            }
            std::vector<std::string> patterns;
            for (std::string const& name : namesOf(*option)) {
                patterns.push_back(command->get_name() + ':' + name);
            }
            out << "    " << join(patterns, "|") << ")\n";
            if (value.isFile) {
                out << "      COMPREPLY=($(compgen -f -- \"$current\"))\n";
            } else if (!value.choices.empty()) {
                out << "      COMPREPLY=($(compgen -W '" << join(value.choices, " ")
                    << "' -- \"$current\"))\n";
            }
            out << "      return ;;\n";
        }
    }
    out << "  esac\n"
           "  case $command in\n";
    for (CLI::App const* const command : commandsOf(program)) {
        std::vector<std::string> words = argumentChoices(*command);
        for (CLI::Option const* const option : optionsOf(*command)) {
            for (std::string const& name : namesOf(*option)) {
                words.push_back(name);
            }
        }
        out << "    " << command->get_name() << ") words='" << join(words, " ") << "' ;;\n";
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
std::string zshValue(OptionValue const& value) {
    if (!value.isTaken) {
        return "";
    }
    std::string const action = value.isFile            ? "_files"
                               : value.choices.empty() ? " "
                                                       : '(' + join(value.choices, " ") + ')';
    return ':' + escaped(value.word, ":") + ':' + action;
}

void writeZsh(CLI::App const& program, std::ostream& out) {
    out << "#compdef vexma\n"
           "_vexma() {\n"
           "  local -a commands\n"
           "  commands=(\n";
    for (CLI::App const* const command : commandsOf(program)) {
        out << "    " << quoted(command->get_name() + ':' + command->get_description()) << '\n';
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
    for (CLI::App const* const command : commandsOf(program)) {
        out << "    " << command->get_name() << ")\n      _arguments";
        for (CLI::Option const* const option : optionsOf(*command)) {
            for (std::string const& name : namesOf(*option)) {
                out << " \\\n        "
                    << quoted('*' + name + '[' + escaped(option->get_description(), "[]:\\") + ']' +
                              zshValue(valueOf(*option)));
            }
        }
        std::vector<std::string> const choices = argumentChoices(*command);
        out << " \\\n        "
            << quoted(choices.empty() ? "*:file:_files" : "1:argument:(" + join(choices, " ") + ')')
            << " ;;\n";
    }
    out << "  esac\n"
           "}\n"
           "_vexma \"$@\"\n";
}

void writeFish(CLI::App const& program, std::ostream& out) {
    for (CLI::App const* const command : commandsOf(program)) {
        out << "complete -c vexma -n __fish_use_subcommand -f -a " << command->get_name() << " -d "
            << quoted(command->get_description()) << '\n';
    }
    for (CLI::App const* const command : commandsOf(program)) {
        std::string const start =
            "complete -c vexma -n '__fish_seen_subcommand_from " + command->get_name() + "'";
        for (CLI::Option const* const option : optionsOf(*command)) {
            OptionValue const value = valueOf(*option);
            out << start;
            for (std::string const& name : option->get_snames()) {
                out << " -s " << name;
            }
            for (std::string const& name : option->get_lnames()) {
                out << " -l " << name;
            }
            if (value.isTaken) {
                out << (value.isFile ? " -r -F" : " -x");
            }
            if (!value.choices.empty()) {
                out << " -a " << quoted(join(value.choices, " "));
            }
            out << " -d " << quoted(option->get_description()) << '\n';
        }
        std::vector<std::string> const choices = argumentChoices(*command);
        if (!choices.empty()) {
            out << start << " -f -a " << quoted(join(choices, " ")) << '\n';
        }
    }
}

struct Shell {
    char const* name;
    void (*write)(CLI::App const& program, std::ostream& out);
};
constexpr Shell shells[] = {{"bash", &writeBash}, {"zsh", &writeZsh}, {"fish", &writeFish}};

} // namespace

CommandRun addCompletionCommand(CLI::App& command) {
    auto const asked = std::make_shared<std::string>();
    std::vector<std::string> names;
    for (Shell const& shell : shells) {
        names.emplace_back(shell.name);
    }
    command.add_option("SHELL", *asked, "The shell")->required()->check(CLI::IsMember(names));
    command.footer(R"(An installation puts the scripts where the shells look for them.

Examples:
  source <(vexma completion bash)
  vexma completion fish > ~/.config/fish/completions/vexma.fish)");
    return [asked, &program = *command.get_parent()](Console& console) {
        for (Shell const& shell : shells) {
            if (*asked == shell.name) {
                shell.write(program, console.out());
            }
        }
        return Done;
    };
}

} // namespace vex
