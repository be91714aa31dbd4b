#pragma once

#include "host/insight/Explanation.h"

#include <ostream>

namespace vex {

/// Writes one JSON object with the objects and the views, indented.
void writeJson(std::ostream& out, Explanation const& explanation);

} // namespace vex
