#pragma once

#include "apps/vexma/Workplace.h"
#include "host/insight/AnsweredTree.h"

#include <ostream>

namespace vex {

/// Draws a tree answer with what it left out: dimmed, without colour in
/// brackets, with the reason. Members of a left-out object are drawn below it.
/// Gives how asking for the reasons ended; nothing is drawn without an answer.
CallEnd drawTreeWithReasons(std::ostream& out, Workplace& workplace, AnsweredTree const& tree,
                            bool colour);

} // namespace vex
