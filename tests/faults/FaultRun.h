#pragma once

#include "tests/faults/FailingMemory.h"

#include <functional>
#include <string>

/// Something that is done while memory fails.
struct FaultRun {
    /// Made anew for each failure, memory being plentiful: gives what is to run.
    /// What that gives as text must be `expected`, or it raises.
    std::function<std::function<std::string()>()> prepare;
    std::string expected;
    /// Looks at what stays behind, with memory at hand again.
    std::function<void()> check = [] {};
};

/// Lets the 1st, 2nd, ... nth allocation of a run fail, once and from then on,
/// until a run needs no more of them. Nothing but `KRLException` and
/// `std::bad_alloc` may come out, and nothing stay allocated.
void failEveryAllocation(FaultRun const& run);
