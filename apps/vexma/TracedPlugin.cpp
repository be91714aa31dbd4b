#include "apps/vexma/TracedPlugin.h"

#include "VexTrace.h"
#include "apps/vexma/Console.h"
#include "host/service/Service.h"

#include <cstdio>

namespace vex {

namespace {

// Called on whatever thread traces: one write for a line keeps lines apart.
void showTrace(char const* text) {
    std::string line = printable(text, true);
    if (line.empty() || line.back() != '\n') {
        line += '\n';
    }
    std::fputs(line.c_str(), stderr);
}

} // namespace

std::shared_ptr<PluginProxy> loadPlugin(SourceOptions const& options) {
    if (options.trace) {
        VexSetTraceSink(&showTrace);
    }
    return loadPlugin(options.pluginFile);
}

} // namespace vex
