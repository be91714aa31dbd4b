#pragma once

#include "host/insight/PolicyTest.h"

#include <string>
#include <vector>

namespace vex {

/// Expectations in the form of JUnit: a suite for each policy, a test for each thing that is
/// expected.
std::string toJunit(std::vector<ExpectationResult> const& results);

/// What became of one, in lines without an end of line at the last; "" when it holds.
std::string describeFailure(ExpectationResult const& result);

} // namespace vex
