#include "host/catalogue/PolicyTrace.h"

#include <algorithm>

namespace vex {

std::span<PolicyTrace::Decision const> PolicyTrace::decisionsOf(ElementNumber element) const {
    auto const first = std::lower_bound(
        decisions.begin(), decisions.end(), element,
        [](Decision const& each, ElementNumber wanted) { return each.element < wanted; });
    auto const last = std::upper_bound(
        first, decisions.end(), element,
        [](ElementNumber wanted, Decision const& each) { return wanted < each.element; });
    return {first, last};
}

} // namespace vex
