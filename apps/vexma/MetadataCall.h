#pragma once

#include "apps/vexma/RequestOptions.h"
#include "apps/vexma/Workplace.h"

namespace vex {

/// Sends the options' request as a metadata request and gives its outcome.
ActionOutcome callMetadata(Workplace& workplace, KRLIDOM_OwnedDocument request);

/// What a request starts at, read before the request goes.
struct RequestStart {
    explicit RequestStart(KRLIDOM_OwnedDocument const& request);
    I18NString path;
    I18NString reference;
};

/// Complains about a metadata request that was not answered; when a name on the
/// way was not found, with the names that may have been meant. Gives the status
/// to end with.
int complainAboutRequest(ActionOutcome const& outcome, RequestStart const& start,
                         Workplace& workplace, Console& console);

} // namespace vex
