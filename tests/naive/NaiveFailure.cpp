#include "tests/naive/NaiveFailure.h"

namespace naive {

void raise(std::uint32_t id, Text const& source, int line, Text const& function,
           Texts const& parameters) {
    throw Failure{id, source, line, function, parameters};
}

void WorkBudget::spend() {
    if (m_left == 0) {
        throw GaveUp();
    }
    --m_left;
}

} // namespace naive
