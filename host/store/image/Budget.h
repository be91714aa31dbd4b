#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <limits>
#include <optional>

namespace vex {

/// What one call or command may use up: time, steps of work, memory. While an object of
/// this class lives, all that its thread does for the call is charged to it: the
/// object-model operations charge themselves, and so does what the host does besides
/// (reading a line, suggestions, comparisons). What is too much raises
/// `KRLLimitException`.
///
/// Budgets nest: what is charged to the inner one is charged to those around it, and each
/// of them may end it.
class Budget {
public:
    static constexpr std::size_t Unlimited = std::numeric_limits<std::size_t>::max();

    struct Allowed {
        std::optional<std::chrono::steady_clock::time_point> deadline{};
        /// May be null; owned by the caller, and may be set by another thread or a
        /// signal handler.
        std::atomic<bool> const* cancelled = nullptr;
        std::size_t steps = Unlimited;
        std::size_t bytes = Unlimited;
    };

    explicit Budget(Allowed const& allowed);
    ~Budget();
    Budget(Budget const&) = delete;
    Budget& operator=(Budget const&) = delete;

    /// Charges steps, each about as long as a call of an object-model operation. Cheap:
    /// looks at the clock only once in many steps.
    static void charge(std::size_t steps = 1) {
        if (t_current != nullptr) {
            t_current->chargeAll(steps);
        }
    }
    /// Charges memory that is held until the call ends.
    static void chargeBytes(std::size_t bytes);
    /// Raises when the call is cancelled, whatever else has run out: for what must come to
    /// its end unless somebody says otherwise.
    static void checkCancelled();

    /// @{
    /// What was charged so far.
    std::size_t stepsDone() const { return m_steps; }
    std::size_t bytesHeld() const { return m_bytes; }
    /// @}
    /// True when the work took more than the steps allowed.
    bool isSpent() const { return m_steps > m_allowed.steps; }

private:
    void chargeAll(std::size_t steps);
    void take(std::size_t steps);
    void checkClock(std::size_t steps);

    static constinit thread_local Budget* t_current;

    Budget* m_outer;
    Allowed m_allowed;
    std::size_t m_steps = 0;
    std::size_t m_bytes = 0;
    std::size_t m_untilClock = 0;
};

} // namespace vex
