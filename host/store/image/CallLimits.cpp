#include "host/store/image/CallLimits.h"

#include "KRLException.h"

namespace vex {

namespace {
constexpr unsigned callsBetweenClockReads = 64; // a clock read costs as much as a few calls
}

constinit thread_local CallLimits* CallLimits::t_current = nullptr;

CallLimits::CallLimits(std::optional<std::chrono::steady_clock::time_point> deadline,
                       std::atomic<bool> const* cancelled)
    : m_outer(t_current), m_deadline(deadline), m_cancelled(cancelled) {
    t_current = this;
}

CallLimits::~CallLimits() {
    t_current = m_outer;
}

void CallLimits::checkNow() {
    if (m_cancelled != nullptr && m_cancelled->load(std::memory_order_relaxed)) {
        throw KRLLimitException("the call was cancelled; ask again to get the whole answer");
    }
    if (!m_deadline.has_value()) {
        return;
    }
    if (m_untilClock != 0) {
        --m_untilClock;
        return;
    }
    m_untilClock = callsBetweenClockReads;
    if (std::chrono::steady_clock::now() >= *m_deadline) {
        throw KRLLimitException("the deadline of the call has passed; ask for less, such as a "
                                "smaller depth or fewer properties, or allow more time");
    }
}

} // namespace vex
