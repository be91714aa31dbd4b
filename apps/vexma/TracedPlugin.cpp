#include "apps/vexma/TracedPlugin.h"

#include "VexTrace.h"
#include "apps/vexma/Console.h"
#include "host/service/Service.h"

#include <cstdio>
#include <new>

namespace vex {

namespace {

// Called on whatever thread traces: one write for a line keeps lines apart. Also called by
// destructors that no memory is left for: what cannot be shown then is dropped.
void showTrace(char const* text) noexcept {
    try {
        std::string line = printable(text, true);
        if (line.empty() || line.back() != '\n') {
            line += '\n';
        }
        std::fputs(line.c_str(), stderr);
    } catch (std::bad_alloc const&) {
        std::fputs("(no memory for a line of trace)\n", stderr);
    }
}

} // namespace

std::shared_ptr<PluginProxy> loadPlugin(SourceOptions const& options, Console& console) {
    if (options.trace) {
        VexSetTraceSink(&showTrace);
    }
    std::shared_ptr<PluginProxy> const plugin = loadPlugin(options.pluginFile);
    return {plugin.get(), [plugin, &console](PluginProxy* ended) {
                try {
                    ended->Terminate();
                } catch (KRLException const& problem) {
                    console.fail(problem.what());
                } catch (std::bad_alloc const&) {
                    console.fail("there is no memory to end the plug-in's work in order");
                }
            }};
}

} // namespace vex
