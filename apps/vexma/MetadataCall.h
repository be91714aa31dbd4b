#pragma once

#include "apps/vexma/RequestOptions.h"
#include "apps/vexma/Workplace.h"

namespace vex {

/// Sends the options' request as a metadata request and gives its outcome.
ActionOutcome callMetadata(Workplace& workplace, KRLIDOM_OwnedDocument request);

/// Complains about a metadata request that was not answered; when a name on the
/// way was not found, with the names that may have been meant. Gives the status
/// to end with.
int complainAboutRequest(ActionOutcome const& outcome, MetadataRequest const& request,
                         Workplace& workplace, Console& console);

} // namespace vex
