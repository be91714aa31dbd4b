#pragma once

#include <atomic>
#include <chrono>
#include <optional>

namespace vex {

/// Ends the calls of one thread that run too long: while an object of this
/// class lives, the object-model operations of its thread raise
/// `KRLLimitException` once the deadline has passed or `cancelled` is set.
/// Scopes nest; the inner one rules.
class CallLimits {
public:
    /// `cancelled` may be null; it is owned by the caller and may be set by
    /// another thread or a signal handler.
    CallLimits(std::optional<std::chrono::steady_clock::time_point> deadline,
               std::atomic<bool> const* cancelled);
    ~CallLimits();
    CallLimits(CallLimits const&) = delete;
    CallLimits& operator=(CallLimits const&) = delete;

    /// Raises when the call is to end. Cheap: looks at the clock only once in
    /// many calls.
    static void check() {
        if (t_current != nullptr) {
            t_current->checkNow();
        }
    }

private:
    void checkNow();

    static constinit thread_local CallLimits* t_current;

    CallLimits* m_outer;
    std::optional<std::chrono::steady_clock::time_point> m_deadline;
    std::atomic<bool> const* m_cancelled;
    unsigned m_untilClock = 0;
};

} // namespace vex
