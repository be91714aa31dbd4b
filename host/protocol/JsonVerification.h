#pragma once

#include "host/insight/Verification.h"

#include <string>

namespace vex {

/// One JSON object with all users, indented.
std::string toJson(Verification const& verification);

} // namespace vex
