#pragma once

#include "host/import/draft/SourceTree.h"

#include <string_view>

namespace vex {

class ImportWork;

/// Reads JSON. Refuses through the work what is no JSON, what has a key twice in one object,
/// and what is past the limits of depth and values; each where it stands.
SourceTree readJsonTree(std::string_view json, ImportWork& work);

} // namespace vex
