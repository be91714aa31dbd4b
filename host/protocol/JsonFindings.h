#pragma once

#include "host/store/build/Diagnostic.h"

#include <ostream>
#include <string_view>

namespace vex {

/// Writes one JSON object with counts and every finding, indented.
void writeJson(std::ostream& out, Diagnostics const& found);

/// Writes an indented log of the Static Analysis Results Interchange Format, version
/// 2.1.0, with all rules. `version` is the program's.
void writeSarif(std::ostream& out, Diagnostics const& found, std::string_view version);

} // namespace vex
