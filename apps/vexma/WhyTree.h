#pragma once

#include "apps/vexma/Workplace.h"
#include "host/insight/AnsweredTree.h"

#include <ostream>

namespace vex {

/// Draws a tree answer with what it left out: dimmed, without colour in
/// brackets, with the reason. Members of a left-out object are drawn below it.
/// Raises what asking for explanations raises.
void drawTreeWithReasons(std::ostream& out, Workplace& workplace, AnsweredTree const& tree,
                         bool colour);

} // namespace vex
