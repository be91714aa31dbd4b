#pragma once

#include "apps/vexma/CommandSyntax.h"

namespace vex {

/// Each adds its command's options and gives what it does.
CommandRun addMetadataCommand(CommandSyntax& command);
CommandRun addTreeCommand(CommandSyntax& command);
CommandRun addAccessCommand(CommandSyntax& command);
CommandRun addSessionCommand(CommandSyntax& command);
CommandRun addValidateCommand(CommandSyntax& command);
CommandRun addExplainCommand(CommandSyntax& command);
CommandRun addWhoCommand(CommandSyntax& command);
CommandRun addMatrixCommand(CommandSyntax& command);
CommandRun addVerifyCommand(CommandSyntax& command);
CommandRun addDiffCommand(CommandSyntax& command);
CommandRun addImportCommand(CommandSyntax& command);
CommandRun addCompileCommand(CommandSyntax& command);
CommandRun addDecompileCommand(CommandSyntax& command);
CommandRun addPolicyCommand(CommandSyntax& command);
CommandRun addTestCommand(CommandSyntax& command);
CommandRun addTranslateCommand(CommandSyntax& command);
CommandRun addCacheCommand(CommandSyntax& command);
CommandRun addCompletionCommand(CommandSyntax& command);
CommandRun addManCommand(CommandSyntax& command);

} // namespace vex
