#pragma once

#include "host/import/draft/ImportAccount.h"

#include <ostream>

namespace vex {

/// Writes an account for people: how many of each kind of thing were read, mapped and left
/// out, then what was left out and why.
void writeAccount(std::ostream& out, ImportAccount const& account);

} // namespace vex
