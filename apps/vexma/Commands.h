#pragma once

#include "apps/vexma/Console.h"

#include <functional>

namespace CLI {
class App;
}

namespace vex {

/// What a command does once the command line is read; gives the exit status.
using CommandRun = std::function<int(Console&)>;

/// Each adds its command's options and gives what it does.
CommandRun addMetadataCommand(CLI::App& command);
CommandRun addTreeCommand(CLI::App& command);
CommandRun addAccessCommand(CLI::App& command);
CommandRun addSessionCommand(CLI::App& command);
CommandRun addValidateCommand(CLI::App& command);
CommandRun addExplainCommand(CLI::App& command);
CommandRun addVerifyCommand(CLI::App& command);
CommandRun addDiffCommand(CLI::App& command);
CommandRun addCompletionCommand(CLI::App& command);
CommandRun addManCommand(CLI::App& command);

} // namespace vex
