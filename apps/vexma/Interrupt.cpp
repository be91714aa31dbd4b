#include "apps/vexma/Interrupt.h"

namespace vex {

namespace {

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "it is set by a signal handler");

extern "C" void noteInterrupt(int /*signal*/) {
    interrupted.store(true, std::memory_order_relaxed);
}

} // namespace

int InterruptScope::s_open = 0;

InterruptScope::InterruptScope() {
    if (s_open++ != 0) {
        return;
    }
    interrupted.store(false, std::memory_order_relaxed);
    struct sigaction action {};
    action.sa_handler = &noteInterrupt;
    action.sa_flags =
        static_cast<int>(SA_RESETHAND) | SA_RESTART; // the second one finds the default
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &m_earlier);
}

InterruptScope::~InterruptScope() {
    if (--s_open == 0) {
        sigaction(SIGINT, &m_earlier, nullptr);
    }
}

std::atomic<bool> const& InterruptScope::isInterrupted() const {
    return interrupted;
}

} // namespace vex
