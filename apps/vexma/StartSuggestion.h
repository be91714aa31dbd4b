#pragma once

#include "apps/vexma/Workplace.h"

namespace vex {

/// "did you mean A or B?", about the start path or reference of a request that led to
/// nothing or astray; "" when there is nothing to mean. Each leads to the object that
/// it stands for: what would not is replaced by the object's id. Only what the user may
/// see is suggested.
std::string askAboutStart(MetadataRequest const& asked, Workplace& workplace);

} // namespace vex
