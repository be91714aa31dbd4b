#include "apps/vexma/RequestComplaint.h"

#include "VexMessageTexts.h"
#include "apps/vexma/StartSuggestion.h"

#include <algorithm>

namespace vex {

namespace {

/// A name on the way was not found, or the text does not split into names.
constexpr unsigned startFailures[] = {
    VexFailureId::NameNotFound, VexFailureId::ReferencedObjectLost, VexFailureId::PathMalformed,
    VexFailureId::ReferenceNameCount};

bool isAboutStart(CallEnd const& end) {
    return end.failure && std::find(std::begin(startFailures), std::end(startFailures),
                                    end.failure->id) != std::end(startFailures);
}

} // namespace

int complainAboutRequest(CallEnd const& end, MetadataRequest const& request, Workplace& workplace,
                         Console& console) {
    int const status = complainAbout(end, console);
    if (isAboutStart(end)) {
        std::string const question = askAboutStart(request, workplace);
        if (!question.empty()) {
            console.complain(question);
        }
    }
    return status;
}

} // namespace vex
