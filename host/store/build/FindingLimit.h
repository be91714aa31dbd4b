#pragma once

#include "host/store/build/Diagnostic.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace vex {

/// How many findings of a rule are kept of one file: what a hostile or generated document
/// breaks in every line is told often enough, and how often it is told.
class FindingLimit {
public:
    static constexpr std::size_t MostOfARule = 5'000;

    /// Counts a finding; false when there are enough of its rule.
    bool admits(std::string_view rule);

    /// Appends, for each rule with more, how many were left out, where the last one kept stands.
    void tellRest(Diagnostics& found) const;

private:
    std::map<std::string, std::size_t, std::less<>> m_counts; // by rule
};

} // namespace vex
