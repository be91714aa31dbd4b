// The extensions of a plug-in that breaks the rules, beside RuleBreaker.cpp.

#include "tests/host/service/ExplainBreaker.h"

#include "KRLException.h"
#include "VexAccessExplanation.h"
#include "VexAnswerAt.h"
#include "VexPluginExtension.h"
#include "VexTreeExplanation.h"

#include <cstring>
#include <stdexcept>

namespace {

void throwAsAskedFor(I18NString const& modelPath) {
    if (modelPath == explainBreaker::throwStandard) {
        throw std::runtime_error("a standard one");
    }
    if (modelPath == explainBreaker::throwPlatform) {
        throw KRLException("a plain one");
    }
}

void explainAccess(VexSession& /*session*/, I18NString const& modelPath,
                   Vex_Handle_Collection const& objects, bool skipViewLists,
                   VexAccessExplanation& explanation) {
    throwAsAskedFor(modelPath);
    explanation.objects.resize(objects.size());
    for (VexExplainedObject& object : explanation.objects) {
        object.included = skipViewLists;
    }
}

void explainTree(VexSession& /*session*/, I18NString const& modelPath, KRLIDOM_Node& /*request*/,
                 KRLIDOM_Node* /*response*/, VexTreeObserver& observer) {
    throwAsAskedFor(modelPath);
    observer.report({});
    observer.reportOutside({2, 0, 0});
}

void answerAt(VexSession& /*session*/, I18NString const& modelPath, KRLIDOM_Node& /*request*/,
              KRLIDOM_Node* /*response*/, VEX_HANDLE object, VexTreeObserver* observer) {
    throwAsAskedFor(modelPath);
    VexTreeReport report;
    report.object = object;
    observer->report(report);
}

constexpr VexExplainAccess accessExplanation{explainAccess};
constexpr VexExplainTree treeExplanation{explainTree};
constexpr VexAnswerAt answer{answerAt};

} // namespace

extern "C" __attribute__((visibility("default"))) void const*
VexPlugin_getExtension(char const* id) {
    if (std::strcmp(id, VexExplainTree::Id) == 0) {
        return &treeExplanation;
    }
    if (std::strcmp(id, VexAnswerAt::Id) == 0) {
        return &answer;
    }
    return std::strcmp(id, VexExplainAccess::Id) == 0 ? &accessExplanation : nullptr;
}
