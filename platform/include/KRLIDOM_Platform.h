#pragma once

#include "VexExport.h"

/// Makes the XML library beneath the documents ready; needed only before that
/// library is called directly, since every operation on documents does it. The
/// first call does the work, once for the process; it is never undone.
/// Threads: any, at once.
VEX_PLATFORM_API void KRLIDOM_Initialize();
