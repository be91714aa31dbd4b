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

RequestStart::RequestStart(KRLIDOM_OwnedDocument const& request) {
    KRLIDOM_Element const metadata = request.document().getDocumentElement();
    path = metadata.getAttribute("start_at");
    reference = metadata.getAttribute("start_atRef");
}

int complainAboutRequest(ActionOutcome const& outcome, RequestStart const& start,
                         Workplace& workplace, Console& console) {
    int const status = complainAbout(outcome, console);
    if (isAboutStart(outcome)) {
        HostSession const& session = workplace.Session();
        Model const& model = *session.getModel();
        std::string const question = toQuestion(
            start.reference.empty() ? suggestPaths(model, start.path, *session.GetCurrentLocale())
                                    : suggestObjects(model, start.reference));
        if (!question.empty()) {
            console.complain(question);
        }
    }
    return status;
}

} // namespace vex
