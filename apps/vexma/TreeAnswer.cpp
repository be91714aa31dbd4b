#include "apps/vexma/TreeAnswer.h"

#include "host/insight/TreeRecorder.h"

namespace vex {

namespace {

/// Asks for the tree of each start; gives how the first call ended that is not
/// answered.
template <class Ask>
std::optional<CallEnd> askFromEachStart(Workplace& workplace, I18NString const& view,
                                        Ask const& ask) {
    Model const& model = workplace.model();
    TreeQuestion question;
    question.view = view;
    question.collections = collectionsOf(model);
    question.marker = unusedPropertyOf(model);
    for (TreeStart const& start : treeStartsOf(model, workplace.locale())) {
        if (start.path.empty()) {
            continue;
        }
        question.start = start.path;
        CallEnd end = ask(question);
        if (!end.isAnswered()) {
            return end;
        }
    }
    return std::nullopt;
}

TreeRecorder recorderFor(Workplace& workplace) {
    return {workplace.locale(), workplace.responseLimits().elements};
}

CallEnd record(Workplace& workplace, TreeQuestion const& question, TreeRecorder& recorder) {
    recorder.beginTree();
    KRLIDOM_OwnedDocument const request = question.makeRequest().toDocument();
    return workplace.explainTree(request.document(), recorder);
}

void append(AnsweredTree& trees, AnsweredTree const& tree) {
    std::size_t const before = trees.size();
    for (AnsweredObject object : tree) {
        if (object.container != AnsweredObject::None) {
            object.container += before;
        }
        trees.push_back(object);
    }
}

} // namespace

TreeAnswer askForTree(Workplace& workplace, TreeQuestion const& question) {
    TreeRecorder recorder = recorderFor(workplace);
    CallEnd end = record(workplace, question, recorder);
    return {recorder.take(), std::move(end)};
}

ModelTrees askForTrees(Workplace& workplace, I18NString const& view) {
    TreeRecorder recorder = recorderFor(workplace);
    auto refusal = askFromEachStart(workplace, view, [&](TreeQuestion const& question) {
        return record(workplace, question, recorder);
    });
    return {recorder.take(), std::move(refusal)};
}

ModelTrees matchTrees(Workplace& workplace) {
    ModelTrees trees;
    trees.refusal = askFromEachStart(workplace, {}, [&](TreeQuestion const& question) {
        MetadataAnswer const answer = workplace.metadata(question.makeRequest());
        if (answer.end.isAnswered()) {
            append(trees.objects, matchAnswer(workplace.model(), workplace.locale(), question,
                                              answer.response.document().getDocumentElement()));
        }
        return answer.end;
    });
    return trees;
}

} // namespace vex
