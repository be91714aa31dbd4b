#pragma once

#include "host/insight/Verification.h"

#include <string>
#include <string_view>

namespace vex {

/// One JSON object with all users, indented.
std::string toJson(Verification const& verification);

/// A log of the Static Analysis Results Interchange Format, version 2.1.0: a result for each
/// finding, those that are accepted as suppressed. `version` is the program's.
std::string toSarif(Verification const& verification, std::string_view version);

} // namespace vex
