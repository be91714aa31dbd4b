#include "apps/vexma/TreeAnswer.h"

namespace vex {

TreeAnswer askForTree(Workplace& workplace, TreeQuestion const& question) {
    TreeAnswer answer;
    MetadataAnswer const metadata = workplace.metadata(question.makeRequest());
    answer.end = metadata.end;
    if (answer.end.isAnswered()) {
        answer.objects = matchAnswer(workplace.model(), workplace.locale(), question,
                                     metadata.response.document().getDocumentElement());
    }
    return answer;
}

ModelTrees askForTrees(Workplace& workplace, I18NString const& view) {
    Model const& model = workplace.model();
    TreeQuestion question;
    question.view = view;
    question.collections = collectionsOf(model);
    question.marker = unusedPropertyOf(model);
    ModelTrees trees;
    for (TreeStart const& start : treeStartsOf(model, workplace.locale())) {
        if (start.path.empty()) {
            continue;
        }
        question.start = start.path;
        TreeAnswer answer = askForTree(workplace, question);
        if (!answer.end.isAnswered()) {
            trees.refusal = std::move(answer.end);
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
