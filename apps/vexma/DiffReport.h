#pragma once

#include "host/insight/Differences.h"

#include <ostream>

namespace vex {

/// Draws the differences as a tree, a line for each object with a sign for what
/// becomes of it, and counts them at the end.
void drawDifferences(std::ostream& out, Differences const& differences, bool colour);

} // namespace vex
