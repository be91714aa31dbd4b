#pragma once

#include "apps/vexma/CommandSyntax.h"

namespace vex {

/// What a command line asks for: a command to run, or nothing any more.
struct CommandLine {
    CommandSyntax const* command = nullptr; // null: help was given, or a complaint made
    int status = 0;                         // to end with then
};

/// Reads the words of a command line into the targets of the options. Answers a
/// request for help on the console, and complains about what cannot be read.
CommandLine readCommandLine(CommandSyntax& program, int argc, char const* const* argv,
                            Console& console);

} // namespace vex
