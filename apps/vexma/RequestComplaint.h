#pragma once

#include "apps/vexma/Workplace.h"

namespace vex {

/// Complains about a metadata request that was not answered; when a name on the
/// way was not found, with the names that may have been meant. Gives the status
/// to end with.
int complainAboutRequest(CallEnd const& end, MetadataRequest const& request, Workplace& workplace,
                         Console& console);

} // namespace vex
