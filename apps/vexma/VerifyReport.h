#pragma once

#include "host/insight/Verification.h"

#include <ostream>

namespace vex {

/// Writes what verifying found, a paragraph for each user, and sums it up.
void writeVerification(std::ostream& out, Verification const& verification);

} // namespace vex
