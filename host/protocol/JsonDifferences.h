#pragma once

#include "host/insight/Differences.h"

#include <string>

namespace vex {

/// One JSON object with the counts and what differs, in the same order, indented.
/// What is listed for what is inside it is left out.
std::string toJson(Differences const& differences, std::vector<RightChange> const& rights = {});

/// The same for several users, with what differs in views, grants and users once.
std::string toJson(std::vector<UserDifferences> const& users,
                   std::vector<RightChange> const& rights);

} // namespace vex
