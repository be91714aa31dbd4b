#include "apps/vexma/Progress.h"

#include <iostream>

namespace vex {

namespace {

constexpr std::chrono::milliseconds patience{500};
constexpr std::chrono::milliseconds interval{100};

} // namespace

Progress::Progress(Console const& console, std::string what)
    : m_what(printable(what, false)), m_watched(console.errorIsTerminal()),
      m_next(Clock::now() + patience) {}

Progress::~Progress() {
    if (m_shown) {
        std::cerr << "\r\033[K" << std::flush;
    }
}

void Progress::report(std::size_t done, std::size_t total) {
    if (!m_watched || total == 0 || Clock::now() < m_next) {
        return;
    }
    constexpr std::size_t percent = 100;
    std::cerr << "\rvexma: " << m_what << ", " << done / (total / percent + 1) << " %"
              << std::flush;
    m_shown = true;
    m_next = Clock::now() + interval;
}

} // namespace vex
