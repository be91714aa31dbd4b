#pragma once

#include "apps/vexma/Console.h"

#include <chrono>
#include <cstddef>
#include <string>

namespace vex {

/// Tells people at a terminal how far slow work is; silent when it takes less
/// than half a second, and when nobody watches.
class Progress {
public:
    explicit Progress(Console const& console, std::string what = "reading the model");
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    /// Removes what it wrote.
    ~Progress();

    void report(std::size_t done, std::size_t total);

private:
    using Clock = std::chrono::steady_clock;

    std::string m_what;
    bool m_watched;
    bool m_shown = false;
    Clock::time_point m_next;
};

} // namespace vex
