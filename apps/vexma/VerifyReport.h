#pragma once

#include "host/insight/Verification.h"

#include <cstddef>
#include <ostream>

namespace vex {

/// How many findings of a kind and cause are written for a user, unless all are.
inline constexpr std::size_t shownOfAKind = 10;

/// Writes what verifying found, a paragraph for each user, and sums it up. What is accepted
/// is counted only. `all`: every finding, else the first of each kind and cause, and how
/// many more there are.
void writeVerification(std::ostream& out, Verification const& verification, bool all, bool colour);

} // namespace vex
