#pragma once

#include "apps/vexma/Console.h"
#include "host/content/ImageCache.h"

#include <memory>
#include <string>

namespace vex {

/// Where the images of whoever runs the program are kept: by $XDG_CACHE_HOME, else by $HOME;
/// "" when neither names a place.
std::string userCacheFolder();

/// Null without such a place, and where $VEXMA_CACHE_SIZE is 0. What is written into it is
/// waited for once the results are out; what stood in the way is told when the user wants to
/// know. Raises `UsageException` when $VEXMA_CACHE_SIZE is no number.
std::shared_ptr<ImageCache> openUserCache(Console& console);

} // namespace vex
