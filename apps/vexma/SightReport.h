#pragma once

#include "host/insight/Sight.h"

#include <ostream>
#include <vector>

namespace vex {

/// Writes who sees each object and why, a paragraph for each.
void writeSight(std::ostream& out, std::vector<ObjectSight> const& objects, bool colour);

/// Draws objects by users or roles, with a line that tells the signs.
void writeMatrix(std::ostream& out, SightMatrix const& matrix, bool colour);

} // namespace vex
