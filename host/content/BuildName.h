#pragma once

#include <string>

namespace vex {

/// Tells this program, with the libraries that it was started with, from every other build and
/// from itself with other libraries: they may read the same document otherwise. The same for
/// each run, wherever its files stand.
std::string const& buildName();

} // namespace vex
