#pragma once

#include <cstddef>

/// What this thread has done since the program began, in counts: no clock, so that the same
/// work gives the same figures on every machine.
struct Counts {
    /// Branches of the code that is counted (see CMakeLists.txt), and eight bytes for each that
    /// it copied, compared or searched through the C library.
    std::size_t steps = 0;
    std::size_t allocations = 0;
    std::size_t bytes = 0; // that were allocated, given back or not
    std::size_t held = 0;  // bytes that are allocated now
    std::size_t peak = 0;  // the most that were, since `restartPeak`
};

Counts countsNow();

/// What is held now becomes the peak.
void restartPeak();
