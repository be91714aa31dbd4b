#pragma once

#include "host/store/build/Diagnostic.h"

#include <string>
#include <string_view>

namespace vex {

/// One JSON object with counts and every finding, indented.
std::string toJson(Diagnostics const& found);

/// An indented log of the Static Analysis Results Interchange Format, version
/// 2.1.0, with all rules. `version` is the program's.
std::string toSarif(Diagnostics const& found, std::string_view version);

} // namespace vex
