#pragma once

#include "KRLIDOM_Element.h"
#include "apps/vexma/RequestWarnings.h"
#include "apps/vexma/Workplace.h"

namespace vex {

/// Warns when the object that the request's start path or reference led to does not
/// bear the last name asked for or does not stand where the path says, and when a
/// reference led to nothing. `response` is
/// the answer; null when none was built. The object is named only when the answer
/// names it, or the user may see it. An object that was asked for by its id (`id` is not
/// "") is what it is; then the warning is about a start that the request names in vain.
void warnAboutStart(MetadataRequest const& asked, I18NString const& id,
                    KRLIDOM_Node const& response, Workplace& workplace, RequestWarnings& warnings);

} // namespace vex
