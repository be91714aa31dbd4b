#include "tests/naive/NaiveFailure.h"

namespace naive {

void raise(std::uint32_t id, const Text& source, int line, const Text& function,
           const Texts& parameters) {
    throw Failure{id, source, line, function, parameters};
}

void WorkBudget::spend() {
    if (m_left == 0) {
        throw GaveUp();
    }
    --m_left;
}

} // namespace naive
