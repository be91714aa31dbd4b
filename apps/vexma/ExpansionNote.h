#pragma once

#include "host/insight/ObjectText.h"

#include <string>
#include <vector>

namespace vex {

/// What is to be said about trees that did not go into everything again; "" when they did.
std::string expansionNote(std::vector<ObjectLabel> const& notGoneIntoAgain);

} // namespace vex
