#include "apps/vexma/StartSuggestion.h"

#include "host/insight/AskedStart.h"
#include "host/insight/ObjectText.h"
#include "host/service/NameSuggestion.h"
#include "host/service/ObjectByName.h"

namespace vex {

namespace {

std::vector<Suggestion> suggestFor(MetadataRequest const& asked, Workplace& workplace) {
    Model const& model = workplace.model();
    auto const mayBeNamed = [&](Vex_Handle_Collection const& objects) {
        return workplace.access(objects, 0).verdicts;
    };
    if (asked.reference.empty()) {
        return suggestPaths(model, asked.startText(), workplace.locale(), mayBeNamed);
    }
    VEX_HANDLE const named = lookUpObject(model, asked.reference);
    Vex_Handle_Collection objects;
    objects.push_back(named);
    if (named.IsNotNull() && mayBeNamed(objects) == std::vector<bool>{true}) {
        return {{named, asked.reference}}; // a reference that no start leads to
    }
    return suggestObjects(model, asked.reference, mayBeNamed);
}

/// True when the same request finds the object by that text.
bool leadsTo(MetadataRequest asked, Suggestion const& suggestion, Workplace& workplace) {
    asked.setStartText(suggestion.text);
    StartObserver observer;
    CallEnd const end =
        workplace.explainTree(startAloneOf(std::move(asked)).toDocument().document(), observer);
    return end.isAnswered() && observer.start() == suggestion.object;
}

} // namespace

std::string askAboutStart(MetadataRequest const& asked, Workplace& workplace) {
    std::vector<std::string> texts;
    for (Suggestion const& each : suggestFor(asked, workplace)) {
        I18NString const key = keyOf(workplace.model(), each.object);
        if (leadsTo(asked, each, workplace)) {
            texts.push_back(each.text.toUtf8());
        } else if (!key.empty()) {
            texts.push_back("--id " + key.toUtf8());
        }
    }
    return toQuestion(texts);
}

} // namespace vex
