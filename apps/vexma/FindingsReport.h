#pragma once

#include "apps/vexma/Console.h"
#include "host/store/build/Diagnostic.h"

namespace vex {

/// How many findings there are of each severity.
struct FindingCounts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;
};
FindingCounts countFindings(Diagnostics const& found);

/// A line for each finding, "file:line:column: severity: text [rule]", those of
/// one file together. Unless `all`, notes are left out, and of each rule those
/// past the tenth in a file, with a line that says how many.
void reportAsText(Diagnostics const& found, bool all, Console& console);

/// One JSON object with every finding.
void reportAsJson(Diagnostics const& found, Console& console);

/// A log of the Static Analysis Results Interchange Format, version 2.1.0.
void reportAsSarif(Diagnostics const& found, Console& console);

/// The table of rules: name, severity, what breaks it.
void reportRules(Console& console);

} // namespace vex
