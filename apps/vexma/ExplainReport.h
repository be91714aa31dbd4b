#pragma once

#include "host/insight/Explanation.h"

#include <ostream>

namespace vex {

/// Writes sentences about the objects, then about the views.
void writeExplanation(std::ostream& out, Explanation const& explanation, bool colour);

} // namespace vex
