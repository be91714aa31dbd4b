#include "host/store/build/FindingLimit.h"

#include <algorithm>

namespace vex {

bool FindingLimit::admits(std::string_view rule) {
    auto known = m_counts.find(rule);
    if (known == m_counts.end()) {
        known = m_counts.emplace(rule, 0).first;
    }
    return ++known->second <= MostOfARule;
}

void FindingLimit::tellRest(Diagnostics& found) const {
    for (auto const& [rule, count] : m_counts) {
        if (count <= MostOfARule) {
            continue;
        }
        auto const last =
            std::find_if(found.rbegin(), found.rend(),
                         [&name = rule](Diagnostic const& each) { return each.rule == name; });
        if (last != found.rend()) {
            Diagnostic rest = *last;
            rest.text =
                std::to_string(count - MostOfARule) + " more are left out; correct these first";
            found.push_back(std::move(rest));
        }
    }
}

} // namespace vex
