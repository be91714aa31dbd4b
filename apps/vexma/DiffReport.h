#pragma once

#include "host/insight/Differences.h"

#include <ostream>

namespace vex {

/// Writes what differs in languages, views, grants and users, a line for each.
void writeRights(std::ostream& out, std::vector<RightChange> const& rights, bool colour);

/// Draws the differences as a tree, a line for each object with a sign for what
/// becomes of it, and counts them at the end.
void drawDifferences(std::ostream& out, Differences const& differences, bool colour);
/// The same under a line for the user.
void drawDifferences(std::ostream& out, UserDifferences const& user, bool colour);

} // namespace vex
