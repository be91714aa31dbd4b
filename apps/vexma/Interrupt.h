#pragma once

#include <atomic>

#include <signal.h>

namespace vex {

/// While it lives, the first interrupt (SIGINT) asks the running call to end
/// and a second one ends the program. Outside of calls interrupts end the
/// program as ever. One inside another adds nothing: what was interrupted stays so until
/// the outer one ends. On one thread.
class InterruptScope {
public:
    InterruptScope();
    InterruptScope(InterruptScope const&) = delete;
    InterruptScope& operator=(InterruptScope const&) = delete;
    ~InterruptScope();

    std::atomic<bool> const& isInterrupted() const;

private:
    static int s_open;

    struct sigaction m_earlier {}; // of the outer one
};

} // namespace vex
