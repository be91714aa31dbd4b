#pragma once

#include "host/insight/Differences.h"

#include <ostream>
#include <vector>

namespace vex {

/// Writes one JSON object with the counts and what differs, in the same order, indented.
/// What is listed for what is inside it is left out.
void writeJson(std::ostream& out, Differences const& differences,
               std::vector<RightChange> const& rights = {});

/// The same for several users, with what differs in views, grants and users once.
void writeJson(std::ostream& out, std::vector<UserDifferences> const& users,
               std::vector<RightChange> const& rights);

} // namespace vex
