#pragma once

#include "VexExport.h"

/// Writes a line of trace for developers. Nothing happens until a host has set
/// a sink. Threads: any.
VEX_PLATFORM_API void OutputDebugString(char const* text);

/// Takes a line of trace. Called on the tracing thread; several may call at once. Must
/// raise nothing: destructors trace too. Its code stays loaded until another sink is set
/// and the calls have ended.
using VexTraceSink = void (*)(char const* text);

/// Where trace goes from now on; null turns it off. Threads: any.
VEX_PLATFORM_API void VexSetTraceSink(VexTraceSink sink);
