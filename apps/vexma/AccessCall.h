#pragma once

#include "apps/vexma/Workplace.h"

namespace vex {

/// What an accessibility request says about one object.
struct AccessAnswer {
    long verdict = 0; // 1: accessible
    ActionOutcome outcome;
};

/// False when the plug-in gave no verdict: see the outcome.
bool askForAccess(Workplace& workplace, VEX_HANDLE object, long mode, AccessAnswer& answer);

} // namespace vex
