#pragma once

#include "KRLIDOM_Element.h"

#include <ostream>

namespace vex {

/// Draws a response for people: a line for each setting, then the trees, a line
/// for each object with its class, its name and its other properties.
void drawResponse(std::ostream& out, KRLIDOM_Element const& response, bool colour);

} // namespace vex
