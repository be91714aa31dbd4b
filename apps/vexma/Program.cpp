#include "KRLException.h"
#include "apps/vexma/CommandLine.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/OwnStack.h"
#include "apps/vexma/SourceOptions.h"
#include "apps/vexma/UntimelyEnd.h"
#include "host/service/PluginException.h"
#include "host/store/image/HostException.h"

#include <algorithm>
#include <exception>
#include <new>
#include <string_view>

namespace vex {

namespace {

struct CommandRow {
    char const* name;
    char const* help;
    CommandRun (*add)(CommandSyntax&);
};
constexpr CommandRow commands[] = {
    {"metadata", "Ask for what a user may see of a model", &addMetadataCommand},
    {"tree", "Draw the same answer for people", &addTreeCommand},
    {"access", "Say whether objects are accessible", &addAccessCommand},
    {"explain", "Say why objects are accessible or not, and how the tree treats them",
     &addExplainCommand},
    {"who", "Say which users and roles see objects, and why", &addWhoCommand},
    {"matrix", "Draw objects by the users or roles that see them", &addMatrixCommand},
    {"verify", "Prove that trees and accessibility agree, and that nothing leaks",
     &addVerifyCommand},
    {"diff", "Compare what two users, views, languages or models show", &addDiffCommand},
    {"session", "Serve a session over standard input and output", &addSessionCommand},
    {"validate", "Report errors and doubtful spots of a model or catalogue", &addValidateCommand},
    {"import", "Make a model and a catalogue of a source in another format", &addImportCommand},
    {"compile", "Make an image of a model, which is opened at once", &addCompileCommand},
    {"decompile", "Write the model document of an image", &addDecompileCommand},
    {"test", "Hold what policies expect against what users see", &addTestCommand},
    {"policy", "Show what the rules of a policy come to", &addPolicyCommand},
    {"translate", "Take texts out of a model to translate them, and put them in again",
     &addTranslateCommand},
    {"cache", "List or clear the images that model documents are opened from", &addCacheCommand},
    {"completion", "Print the completion script of a shell", &addCompletionCommand},
    {"man", "Print a manual page", &addManCommand},
};

bool isCommand(std::string_view name) {
    return std::any_of(std::begin(commands), std::end(commands),
                       [&](CommandRow const& row) { return row.name == name; });
}

/// Runs the program, or a part of it; what it ends with an exception leaves no results
/// that look whole.
template <class Run> int runGuarded(Run const& run, Console& console) {
    auto const complain = [&](char const* text, int status) {
        console.takeBack();
        console.complain(text);
        return status;
    };
    try {
        return run();
    } catch (UsageException const& problem) {
        return complain(problem.what(), WrongUsage);
    } catch (PluginException const& problem) {
        return complain(problem.what(), Refused);
    } catch (KRLException const& problem) {
        // What ends a call is part of its outcome, so this came up in reading.
        return complain(problem.what(), Unreadable);
    } catch (std::bad_alloc const&) {
        return complain("there is not enough memory for the model", Unreadable);
    } catch (std::exception const& problem) { // of the system, by way of a library
        return complain(problem.what(), Refused);
    }
}

int runProgram(int argc, char** argv, Console& console) {
    if (argc > 1 && argv[1][0] != '-' && !isCommand(argv[1])) {
        console.complain("there is no command \"" + std::string(argv[1]) +
                         "\"; \"vexma --help\" lists them");
        return WrongUsage;
    }
    CommandSyntax program("vexma", "Says what a user may see of a semantic model.");
    program.addVersion("vexma " VEX_VERSION);
    program.epilog =
        R"("vexma COMMAND --help" tells more. Exit status: 0 done; 1 the plug-in refused or a limit
ended the call, with --strict after a warning, with --exit-code when something differs; 2 wrong
usage; 3 a model, catalogue or request could not be read. Checks of what users see have more:
4 more is shown than the views say, 5 the check did not finish, 6 nothing was verified.)";
    for (CommandRow const& row : commands) {
        CommandSyntax& command = program.addCommand(row.name, row.help);
        command.run = row.add(command);
    }
    CommandLine const line = readCommandLine(program, argc, argv, console);
    return line.command == nullptr ? line.status : line.command->run(console);
}

int runWatched(int argc, char** argv) {
    Console console;
    UntimelyEnd const untimely(console);
    return console.finish(runGuarded([&] { return runProgram(argc, argv, console); }, console));
}

} // namespace

} // namespace vex

int main(int argc, char** argv) {
    return vex::OwnStack::run(&vex::runWatched, argc, argv);
}
