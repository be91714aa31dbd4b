#pragma once

#include "host/store/image/StoreData.h"

#include <cstddef>

namespace vex {

/// Says what is wrong with a store that was read; null when every question can be asked of
/// it. Objects and properties may be nested `depth` deep. Looks at each number once, at no
/// text.
char const* complaintAbout(StoreData const& data, std::size_t depth);

} // namespace vex
