#pragma once

#include "VexExport.h"

/// Counts the incompatible changes of these headers. A plug-in exports the
/// number that it was built with as `VexPlugin_platformVersion`; a host
/// compares it before the first call.
#define VEX_PLATFORM_VERSION 1

/// The number that the loaded platform was built with.
extern "C" VEX_PLATFORM_API int VexPlatform_version();
