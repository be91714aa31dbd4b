// The extensions of a plug-in that breaks the rules, beside RuleBreaker.cpp.

#include "tests/host/service/ExplainBreaker.h"

#include "KRLException.h"
#include "VexAccessExplanation.h"
#include "VexPluginExtension.h"

#include <cstring>
#include <stdexcept>

namespace {

void explainAccess(VexSession& /*session*/, I18NString const& modelPath,
                   Vex_Handle_Collection const& objects, bool skipViewLists,
                   VexAccessExplanation& explanation) {
    if (modelPath == explainBreaker::throwStandard) {
        throw std::runtime_error("a standard one");
    }
    if (modelPath == explainBreaker::throwPlatform) {
        throw KRLException("a plain one");
    }
    explanation.objects.resize(objects.size());
    for (VexExplainedObject& object : explanation.objects) {
        object.included = skipViewLists;
    }
}

constexpr VexExplainAccess accessExplanation{explainAccess};

} // namespace

extern "C" __attribute__((visibility("default"))) void const*
VexPlugin_getExtension(char const* id) {
    return std::strcmp(id, VexExplainAccess::Id) == 0 ? &accessExplanation : nullptr;
}
