#pragma once

#include <string>
#include <vector>

namespace vex {

enum class Severity {
    Error,   // it cannot be used
    Warning, // it can, but hardly as it was meant
    Note,    // worth knowing, often meant
};

/// "error", "warning" or "note".
char const* toString(Severity severity);

/// Something that is wrong, or looks wrong, in a document.
struct Diagnostic {
    Severity severity = Severity::Error;
    std::string rule; // stable kebab-case name, such as "duplicate-id"
    std::string file;
    unsigned long line = 0; // from 1; 0 is unknown
    unsigned long column = 0;
    std::string text;   // what is wrong and what to do about it
    std::string part{}; // of the file, in words, where it has no lines: "table Orders"
};

using Diagnostics = std::vector<Diagnostic>;

/// "file:line:column: ", "file: part: "; what is unknown is left out.
std::string placeOf(Diagnostic const& diagnostic);

/// "file:line:column: error: text", "file: part: error: text"; what is unknown
/// is left out.
std::string toString(Diagnostic const& diagnostic);

} // namespace vex
