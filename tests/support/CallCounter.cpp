#include "tests/support/CallCounter.h"

#include "VexException.h"

#include <numeric>

int CallCounter::total() const {
    return std::accumulate(m_counts.begin(), m_counts.end(), 0);
}

void CallCounter::failAt(int nth) {
    m_anyCallFails = true;
    m_untilFailure = nth;
}

void CallCounter::failAt(Call call, int nth) {
    m_anyCallFails = false;
    m_failingCall = call;
    m_untilFailure = nth;
}

void CallCounter::note(Call call) {
    ++m_counts[static_cast<std::size_t>(call)];
    if (m_untilFailure == 0 || (!m_anyCallFails && call != m_failingCall)) {
        return;
    }
    if (--m_untilFailure == 0) {
        VexException(InjectedFailure).raise({"host", 1}, "injected", "KRL_THROW");
    }
}
