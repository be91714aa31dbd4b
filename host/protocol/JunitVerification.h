#pragma once

#include "host/insight/Verification.h"

#include <string>

namespace vex {

/// A report in the form of JUnit: a suite for each user, a test for each kind of finding
/// that counts. A failure tells at most `mostLines` findings, and how many there are.
std::string toJunit(Verification const& verification, std::size_t mostLines);

} // namespace vex
