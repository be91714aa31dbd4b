#include "apps/vexma/MetadataCall.h"

#include "VexAction.h"
#include "VexMessageTexts.h"
#include "host/service/NameSuggestion.h"

#include <algorithm>

namespace vex {

namespace {

/// A name on the way was not found, or the text does not split into names.
constexpr unsigned startFailures[] = {
    VexFailureId::NameNotFound, VexFailureId::ReferencedObjectLost, VexFailureId::PathMalformed,
    VexFailureId::ReferenceNameCount};

bool isAboutStart(ActionOutcome const& outcome) {
    return outcome.raised && std::find(std::begin(startFailures), std::end(startFailures),
                                       outcome.raised->GetId()) != std::end(startFailures);
}

} // namespace

ActionOutcome callMetadata(Workplace& workplace, KRLIDOM_OwnedDocument request) {
    ActionValues values;
    VexParams in;
    in.AddParam(values.Long(0));
    in.AddParam(values.String(workplace.modelPath()));
    in.AddParam(values.Node(std::move(request)));
    return workplace.Call(values.Long(VexAction::MetadataRequest), in);
}

int complainAboutRequest(ActionOutcome const& outcome, MetadataRequest const& request,
                         Workplace& workplace, Console& console) {
    int const status = complainAbout(outcome, console);
    if (isAboutStart(outcome)) {
        HostSession const& session = workplace.Session();
        Model const& model = *session.getModel();
        std::string const question =
            toQuestion(request.reference.empty()
                           ? suggestPaths(model, request.start, *session.GetCurrentLocale())
                           : suggestObjects(model, request.reference));
        if (!question.empty()) {
            console.complain(question);
        }
    }
    return status;
}

} // namespace vex
