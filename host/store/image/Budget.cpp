#include "host/store/image/Budget.h"

#include "KRLException.h"

#include <string>

namespace vex {

namespace {

constexpr std::size_t stepsBetweenClockReads = 64; // a clock read costs as much as a few steps

/// The sum, or the largest number.
std::size_t sumOf(std::size_t a, std::size_t b) {
    return b > Budget::Unlimited - a ? Budget::Unlimited : a + b;
}

void refuseIfCancelled(Budget::Allowed const& allowed) {
    if (allowed.cancelled != nullptr && allowed.cancelled->load(std::memory_order_relaxed)) {
        throw KRLLimitException("the call was cancelled; ask again to get the whole answer");
    }
}

} // namespace

constinit thread_local Budget* Budget::t_current = nullptr;

Budget::Budget(Allowed const& allowed) : m_outer(t_current), m_allowed(allowed) {
    t_current = this;
}

Budget::~Budget() {
    t_current = m_outer;
}

void Budget::chargeAll(std::size_t steps) {
    for (Budget* each = this; each != nullptr; each = each->m_outer) {
        each->take(steps);
    }
}

void Budget::take(std::size_t steps) {
    m_steps = sumOf(m_steps, steps);
    if (isSpent()) {
        throw KRLLimitException("the call takes more than " + std::to_string(m_allowed.steps) +
                                " steps of work, which is the limit; ask for less");
    }
    refuseIfCancelled(m_allowed);
    if (m_allowed.deadline.has_value()) {
        checkClock(steps);
    }
}

void Budget::checkClock(std::size_t steps) {
    if (m_untilClock >= steps) {
        m_untilClock -= steps;
        return;
    }
    m_untilClock = stepsBetweenClockReads;
    if (std::chrono::steady_clock::now() >= *m_allowed.deadline) {
        throw KRLLimitException("the deadline of the call has passed; ask for less, such as a "
                                "smaller depth or fewer properties, or allow more time");
    }
}

void Budget::chargeBytes(std::size_t bytes) {
    for (Budget* each = t_current; each != nullptr; each = each->m_outer) {
        each->m_bytes = sumOf(each->m_bytes, bytes);
        if (each->m_bytes > each->m_allowed.bytes) {
            throw KRLLimitException("what the call holds takes more than " +
                                    std::to_string(each->m_allowed.bytes) +
                                    " bytes, which is the limit; ask for less, or raise the limit "
                                    "with --max-bytes");
        }
    }
}

void Budget::checkCancelled() {
    for (Budget* each = t_current; each != nullptr; each = each->m_outer) {
        refuseIfCancelled(each->m_allowed);
    }
}

} // namespace vex
