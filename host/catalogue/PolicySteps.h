#pragma once

#include "host/store/image/Budget.h"

#include <cstddef>

namespace vex {

/// What finding out the meaning of a policy may take: rules times objects are a product,
/// and so are expressions times what they may name.
class PolicySteps {
public:
    /// Raised when nothing is left.
    struct Exhausted {};

    explicit PolicySteps(std::size_t most) : m_left(most) {}

    void spend(std::size_t steps) {
        if (steps > m_left) {
            throw Exhausted();
        }
        m_left -= steps;
        Budget::charge(steps);
    }

private:
    std::size_t m_left;
};

} // namespace vex
