#pragma once

#include "apps/vexma/Console.h"
#include "apps/vexma/SourceOptions.h"
#include "host/service/PluginProxy.h"

#include <memory>

namespace vex {

/// The plug-in that the options name, ready to be called; from then on its trace goes
/// to standard error when they ask for that. When the last owner goes the plug-in is ended,
/// and the program fails when it cannot be. The console outlives it.
std::shared_ptr<PluginProxy> loadPlugin(SourceOptions const& options, Console& console);

} // namespace vex
