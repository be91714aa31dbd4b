#pragma once

#include <string>

/// The text as one word of a command line of the shell.
inline std::string quotedForShell(std::string const& text) {
    std::string quoted = "'";
    for (char const character : text) {
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return quoted + '\'';
}
