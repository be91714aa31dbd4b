#pragma once

#include "apps/vexma/SourceOptions.h"
#include "host/service/PluginProxy.h"

#include <memory>

namespace vex {

/// The plug-in that the options name, ready to be called; from then on its trace goes
/// to standard error when they ask for that.
std::shared_ptr<PluginProxy> loadPlugin(SourceOptions const& options);

} // namespace vex
