#pragma once

#include "tests/naive/Text.h"

#include <cstddef>
#include <cstdint>

namespace naive {

/// A raised failure. The line -1 means that any line will do.
struct Failure {
    std::uint32_t id = 0;
    Text source;
    int line = -1;
    Text function;
    Texts parameters;
};

constexpr int anyLine = -1;

[[noreturn]] void raise(std::uint32_t id, Text const& source, int line, Text const& function,
                        Texts const& parameters = {});

/// Thrown when an answer would take more steps than the evaluator is willing to make.
struct GaveUp {};

/// The steps that are left for one call.
class WorkBudget {
public:
    explicit WorkBudget(std::size_t steps) : m_left(steps) {}
    void spend();

private:
    std::size_t m_left;
};

} // namespace naive
