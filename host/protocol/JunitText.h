#pragma once

#include <string>

namespace vex {

/// A text as XML holds it, in elements and in attributes; what no document may hold becomes
/// U+FFFD.
std::string junitText(std::string const& text);

} // namespace vex
