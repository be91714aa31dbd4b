// What the library exports. The plug-in itself is found through the factory,
// where loading the library has registered it.

#include "VexAccessExplanation.h"
#include "VexPlatformVersion.h"
#include "plugin/VexAccessAction.h"

#define VEX_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))

/// The platform headers' version that the plug-in was built with.
VEX_PLUGIN_EXPORT int VexPlugin_platformVersion() {
    return VEX_PLATFORM_VERSION;
}

/// See `VexExplainAccess`.
VEX_PLUGIN_EXPORT void VexPlugin_explainAccess(VexSession& session, I18NString const& modelPath,
                                               Vex_Handle_Collection const& objects,
                                               bool skipViewLists,
                                               VexAccessExplanation& explanation) {
    // An action object of its own: the session's cached ones stay as they are.
    VexAccessAction(session).explain(modelPath, objects, skipViewLists, explanation);
}
