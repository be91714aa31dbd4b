#pragma once

#include "host/import/cube/CubeMembers.h"

#include <cstddef>

namespace vex {

/// Reads which members of which cubes a view has: `cubes` with `join_path`, `includes`,
/// `excludes`, `prefix` and `alias`. `entries` are its own, or those of what it extends. All
/// cubes were read.
void readCubesOfView(std::size_t view, SourceEntries& entries, bool isInherited, CubeModel& model,
                     CubeMembers& members, ImportWork& work);

} // namespace vex
