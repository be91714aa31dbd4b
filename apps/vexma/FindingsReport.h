#pragma once

#include "host/store/build/Diagnostic.h"

#include <ostream>

namespace vex {

/// A line for each finding, "file:line:column: severity: text [rule]", those of
/// one file together. Unless `all`, notes are left out, and of each rule those
/// past the tenth in a file, with a line that says how many.
void writeFindings(std::ostream& out, Diagnostics const& found, bool all);

/// The table of rules: name, severity, what breaks it.
void writeRules(std::ostream& out);

} // namespace vex
