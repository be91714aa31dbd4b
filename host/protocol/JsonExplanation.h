#pragma once

#include "host/insight/Explanation.h"

#include <string>

namespace vex {

/// One JSON object with the objects and the views, indented.
std::string toJson(Explanation const& explanation);

} // namespace vex
