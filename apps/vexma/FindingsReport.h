#pragma once

#include "host/store/build/Diagnostic.h"

#include <ostream>

namespace vex {

/// How findings are written for people.
struct FindingsForm {
    bool all = false; // notes too, and of each rule those past the tenth in a file
    bool colour = false;
};

/// A line for each finding, "file:line:column: severity: text [rule]", those of
/// one file together. Unless all are wanted, with a line that says how many of a
/// rule were left out.
void writeFindings(std::ostream& out, Diagnostics const& found, FindingsForm form);

/// The table of rules: name, severity, what breaks it.
void writeRules(std::ostream& out);

} // namespace vex
