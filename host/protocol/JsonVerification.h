#pragma once

#include "host/insight/Verification.h"

#include <ostream>
#include <string_view>

namespace vex {

/// Writes one JSON object with all users, indented.
void writeJson(std::ostream& out, Verification const& verification);

/// Writes a log of the Static Analysis Results Interchange Format, version 2.1.0: a result for each
/// finding, those that are accepted as suppressed. `version` is the program's.
void writeSarif(std::ostream& out, Verification const& verification, std::string_view version);

} // namespace vex
