#pragma once

#include "host/insight/Sight.h"

#include <string>
#include <vector>

namespace vex {

/// One JSON object with who sees each object, indented.
std::string toJson(std::vector<ObjectSight> const& objects);

/// One JSON object with the objects and what each user or role is told, indented.
std::string toJson(SightMatrix const& matrix);

/// The same as comma-separated values, a line for each object: id, reference, class, name,
/// and a column for each user or role.
std::string toCsv(SightMatrix const& matrix);

} // namespace vex
