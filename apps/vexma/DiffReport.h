#pragma once

#include "host/insight/TreeComparison.h"

#include <ostream>
#include <vector>

namespace vex {

/// Draws the differences as a tree, a line for each object with a sign for what
/// becomes of it, and counts them at the end.
void drawDifferences(std::ostream& out, ComparedSide const& before, ComparedSide const& after,
                     std::vector<ComparedObject> const& objects, bool colour);

/// Writes one JSON object with the differences in the same order.
void writeDifferences(std::ostream& out, ComparedSide const& before, ComparedSide const& after,
                      std::vector<ComparedObject> const& objects);

} // namespace vex
