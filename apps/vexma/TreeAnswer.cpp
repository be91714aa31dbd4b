#include "apps/vexma/TreeAnswer.h"

#include "apps/vexma/MetadataCall.h"

namespace vex {

TreeAnswer askForTree(Workplace& workplace, TreeQuestion const& question) {
    TreeAnswer answer;
    answer.outcome = callMetadata(workplace, question.makeRequest().toDocument());
    if (isHandled(answer.outcome)) {
        HostSession& session = workplace.Session();
        answer.objects = matchAnswer(*session.getModel(), *session.GetCurrentLocale(), question,
                                     answer.outcome.response.document().getDocumentElement());
    }
    return answer;
}

ModelTrees askForTrees(Workplace& workplace, I18NString const& view) {
    HostSession& session = workplace.Session();
    Model const& model = *session.getModel();
    TreeQuestion question;
    question.view = view;
    question.collections = collectionsOf(model);
    question.marker = unusedPropertyOf(model);
    ModelTrees trees;
    for (TreeStart const& start : treeStartsOf(model, *session.GetCurrentLocale())) {
        if (start.path.empty()) {
            continue;
        }
        question.start = start.path;
        TreeAnswer answer = askForTree(workplace, question);
        if (!isHandled(answer.outcome)) {
            trees.refusal = std::move(answer.outcome);
            return trees;
        }
        std::size_t const before = trees.objects.size();
        for (AnsweredObject& object : answer.objects) {
            if (object.container != AnsweredObject::None) {
                object.container += before;
            }
            trees.objects.push_back(object);
        }
    }
    return trees;
}

} // namespace vex
