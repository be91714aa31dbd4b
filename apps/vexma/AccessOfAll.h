#pragma once

#include "apps/vexma/Progress.h"
#include "apps/vexma/Workplace.h"

#include <vector>

namespace vex {

/// What the accessibility check says about every element of a model, in document order.
struct AccessOfAll {
    CallEnd end; // without an answer there are no verdicts
    std::vector<bool> verdicts;
};
AccessOfAll askForAccessOfAll(Workplace& workplace, Progress& progress);

} // namespace vex
