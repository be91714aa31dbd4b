#pragma once

#include "host/service/PluginLibrary.h"

#include <string>

namespace vex {

/// Raises what is being handled anew, so that it can be caught when the plug-in is
/// unloaded: of a type of the plug-in's own it becomes a `KRLException` of the same text.
/// Whatever else it is, it passes as it is: what the platform, the standard library and
/// the host itself raise. `what` says what was called, for what has no text.
[[noreturn]] void raiseLasting(PluginLibrary const& library, std::string const& what);

} // namespace vex
