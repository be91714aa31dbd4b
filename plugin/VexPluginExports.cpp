// What the library exports. The plug-in itself is found through the factory,
// where loading the library has registered it.

#include "VexAccessExplanation.h"
#include "VexAnswerAt.h"
#include "VexPlatformVersion.h"
#include "VexPluginExtension.h"
#include "VexTreeExplanation.h"
#include "plugin/VexAccessAction.h"
#include "plugin/VexExplainedTree.h"
#include "provider/VexConstants.h"

#include <string_view>

#define VEX_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

void explainAccess(VexSession& session, I18NString const& modelPath,
                   Vex_Handle_Collection const& objects, bool skipViewLists,
                   VexAccessExplanation& explanation) {
    // An action object of its own: the session's cached ones stay as they are.
    VexAccessAction(session).explain(modelPath, objects, skipViewLists, explanation);
}

constexpr VexExplainAccess accessExplanation{explainAccess};
constexpr VexExplainTree treeExplanation{ExplainTree};
constexpr VexAnswerAt answerAt{AnswerAt};

struct ExtensionRow {
    std::string_view id;
    void const* table;
};

constexpr ExtensionRow extensions[] = {
    {VexExplainAccess::Id, &accessExplanation},
    {VexExplainTree::Id, &treeExplanation},
    {VexAnswerAt::Id, &answerAt},
};

} // namespace

/// The platform headers' version that the plug-in was built with.
VEX_PLUGIN_EXPORT int VexPlugin_platformVersion() {
    return VEX_PLATFORM_VERSION;
}

/// See `VexGetExtension`.
VEX_PLUGIN_EXPORT void const* VexPlugin_getExtension(char const* id) {
    if (id == nullptr) {
        return nullptr;
    }
    for (ExtensionRow const& row : extensions) {
        if (row.id == id) {
            return row.table;
        }
    }
    return nullptr;
}
