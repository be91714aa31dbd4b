#pragma once

#include "host/insight/Sight.h"

#include <ostream>
#include <string>
#include <vector>

namespace vex {

/// Writes one JSON object with who sees each object, indented.
void writeJson(std::ostream& out, std::vector<ObjectSight> const& objects);

/// Writes one JSON object with the objects and what each user or role is told, indented.
void writeJson(std::ostream& out, SightMatrix const& matrix);

/// The same as comma-separated values, a line for each object: id, reference, class, name,
/// and a column for each user or role.
std::string toCsv(SightMatrix const& matrix);

} // namespace vex
