#include "apps/vexma/TreeAnswer.h"

#include "VexMessageTexts.h"
#include "host/insight/ObjectText.h"
#include "host/insight/TreeRecorder.h"
#include "host/store/image/HostException.h"

namespace vex {

namespace {

TreeQuestion questionFor(Workplace const& workplace, I18NString const& view) {
    TreeQuestion question;
    question.view = view;
    question.collections = collectionsOf(workplace.model());
    question.marker = unusedPropertyOf(workplace.model());
    return question;
}

/// How the answer ends where no tree can be asked for: whoever may see nothing is refused
/// there too. What else may be wrong with such a question says nothing about the user.
std::optional<CallEnd> refusalWithoutStart(Workplace& workplace) {
    MetadataRequest request;
    request.depth = 1;
    request.addProperty("name");
    CallEnd end = workplace.metadata(request).end;
    bool const isRefused = end.failure && end.failure->id == VexFailureId::NoViewOrRole;
    return isRefused || end.kind == CallEnd::Kind::Stopped ? std::optional(std::move(end))
                                                           : std::nullopt;
}

/// Asks for the tree of each start; gives how the first call ended that is not
/// answered.
template <class Ask>
std::optional<CallEnd> askFromEachStart(Workplace& workplace, I18NString const& view,
                                        Ask const& ask) {
    TreeQuestion question = questionFor(workplace, view);
    bool isAsked = false;
    for (TreeStart const& start : treeStartsOf(workplace.model(), workplace.locale())) {
        if (start.path.empty()) {
            continue;
        }
        question.start = start.path;
        isAsked = true;
        CallEnd end = ask(question);
        if (!end.isAnswered()) {
            return end;
        }
    }
    return isAsked ? std::nullopt : refusalWithoutStart(workplace);
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

/// More entries than these are not worth the ways that they tell of.
std::size_t mostEntriesOf(Model const& model) {
    constexpr std::size_t waysToAnObject = 4;
    constexpr std::size_t always = 10'000;
    return always + waysToAnObject * model.elementCount();
}

CallEnd record(Workplace& workplace, TreeQuestion const& question, TreeRecorder& recorder,
               I18NString const& id = {}) {
    KRLIDOM_OwnedDocument const request = question.makeRequest().toDocument();
    return workplace.explainTreeAt(id, request.document(), recorder);
}

/// Records the trees by every way. False when there are too many ways, or too deep ones.
bool recordEveryWay(Workplace& workplace, I18NString const& view, ModelTrees& trees) {
    TreeRecorder recorder(workplace.locale(),
                          {workplace.responseLimits().elements, mostEntriesOf(workplace.model())});
    trees.refusal = askFromEachStart(workplace, view, [&](TreeQuestion const& question) {
        recorder.beginTree();
        return record(workplace, question, recorder);
    });
    bool const isFull = recorder.isFull();
    trees.objects = recorder.take();
    return !isFull && !(trees.refusal && trees.refusal->failure &&
                        trees.refusal->failure->id == VexFailureId::AnswerTooDeep);
}

/// Asks, while there are shortcuts that stand too deep, from each.
template <class Ask>
std::optional<CallEnd> askFromTooDeep(Workplace& workplace, TreeQuestion question,
                                      TreeRecorder& recorder, Ask const& ask) {
    while (std::optional<std::size_t> const entry = recorder.findTooDeep()) {
        question.startShortcut = recorder.tree()[*entry].object;
        question.start = startPathOf(question.startShortcut, workplace.locale());
        if (question.start.empty()) {
            return CallEnd{.text = "what stands behind a shortcut is too deep, and no path leads "
                                   "to the " +
                                   describeObject(question.startShortcut, workplace.locale()) +
                                   "; give what it stands in names"};
        }
        recorder.continueTree(*entry);
        CallEnd end = ask(question, *entry);
        if (!end.isAnswered()) {
            return end;
        }
    }
    return std::nullopt;
}

/// The trees of `askForTrees`, each object gone into once behind shortcuts.
ModelTrees recordOnce(Workplace& workplace, I18NString const& view) {
    TreeRecorder recorder(workplace.locale(), {workplace.responseLimits().elements},
                          TreeExtent::Once);
    auto refusal = askFromEachStart(workplace, view, [&](TreeQuestion const& question) {
        recorder.beginTree();
        return record(workplace, question, recorder);
    });
    if (!refusal) {
        refusal = askFromTooDeep(workplace, questionFor(workplace, view), recorder,
                                 [&](TreeQuestion const& question, std::size_t /*entry*/) {
                                     return record(workplace, question, recorder);
                                 });
    }
    return {recorder.take(), std::move(refusal)};
}

/// Matches an answer with the model and hands it over. One that the model does not explain is
/// no answer, nor is an empty one: where a tree starts, an object that is asked for its path is
/// always shown.
template <class Take>
CallEnd matchWith(Workplace const& workplace, TreeQuestion const& question, MetadataAnswer answer,
                  ExpansionMemory* memory, Take const& take) {
    if (!answer.end.isAnswered()) {
        return std::move(answer.end);
    }
    try {
        AnsweredTree const tree =
            matchAnswer(workplace.model(), workplace.locale(), question,
                        answer.response.document().getDocumentElement(), memory);
        if (tree.empty()) {
            return {.text = "the tree that starts at " + question.start.toUtf8() + " is empty"};
        }
        take(tree);
    } catch (HostException const& strange) {
        return {.text = strange.what()};
    }
    return std::move(answer.end);
}

/// The trees of `matchTrees`, each object gone into once behind shortcuts.
ModelTrees matchOnce(Workplace& workplace) {
    TreeRecorder recorder(workplace.locale(), {workplace.responseLimits().elements},
                          TreeExtent::Once);
    ExpansionMemory memory;
    ModelTrees trees;
    auto const ask = [&](TreeQuestion const& question, auto const& take) {
        KRLIDOM_OwnedDocument const request = question.makeRequest().toDocument();
        return matchWith(workplace, question,
                         workplace.observedMetadata(request.document(), recorder), &memory, take);
    };
    trees.refusal = askFromEachStart(workplace, {}, [&](TreeQuestion const& question) {
        recorder.beginTree();
        return ask(question, [&](AnsweredTree const& tree) { append(trees.objects, tree); });
    });
    if (!trees.refusal) {
        trees.refusal = askFromTooDeep(workplace, questionFor(workplace, {}), recorder,
                                       [&](TreeQuestion const& question, std::size_t entry) {
                                           return ask(question, [&](AnsweredTree const& tree) {
                                               continueTree(trees.objects, entry, tree);
                                           });
                                       });
    }
    return trees;
}

} // namespace

TreeAnswer askForTree(Workplace& workplace, TreeQuestion const& question, I18NString const& id) {
    TreeRecorder recorder(workplace.locale(), {workplace.responseLimits().elements});
    recorder.beginTree();
    CallEnd end = record(workplace, question, recorder, id);
    return {recorder.take(), std::move(end)};
}

ModelTrees askForTrees(Workplace& workplace, I18NString const& view) {
    ModelTrees trees;
    return recordEveryWay(workplace, view, trees) ? std::move(trees) : recordOnce(workplace, view);
}

ModelTrees matchTrees(Workplace& workplace) {
    ModelTrees told; // asked for the number of ways alone
    if (!recordEveryWay(workplace, {}, told)) {
        return matchOnce(workplace);
    }
    bool const isTold = told.refusal && !told.refusal->lacksExtension;
    if (isTold && told.refusal->kind == CallEnd::Kind::Stopped) {
        return {{}, std::move(told.refusal)}; // a limit or an interrupt is meant for all of it
    }
    ModelTrees trees;
    trees.refusal = askFromEachStart(workplace, {}, [&](TreeQuestion const& question) {
        return matchWith(workplace, question, workplace.metadata(question.makeRequest()), nullptr,
                         [&](AnsweredTree const& tree) { append(trees.objects, tree); });
    });
    if (isTold && !trees.refusal) {
        trees.refusal = std::move(told.refusal); // the answers say one thing, the plug-in another
    }
    return trees;
}

} // namespace vex
