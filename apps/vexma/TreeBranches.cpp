#include "apps/vexma/TreeBranches.h"

#include <algorithm>

namespace vex {

TreeBranches::TreeBranches(std::vector<std::size_t> containers)
    : m_containers(std::move(containers)), m_isLast(m_containers.size(), true) {
    std::vector<bool> hasLater(m_containers.size(), false);
    for (std::size_t entry = m_containers.size(); entry-- > 0;) {
        std::size_t const container = m_containers[entry];
        if (container != NoContainer) {
            m_isLast[entry] = !hasLater[container];
            hasLater[container] = true;
        }
    }
}

std::string TreeBranches::before(std::size_t entry) const {
    std::vector<char const*> pieces; // the innermost first
    std::size_t at = entry;
    for (; m_containers[at] != NoContainer; at = m_containers[at]) {
        pieces.push_back(at == entry ? (m_isLast[at] ? "└── " : "├── ")
                                     : (m_isLast[at] ? "    " : "│   "));
    }
    std::string text;
    std::for_each(pieces.rbegin(), pieces.rend(), [&](char const* piece) { text += piece; });
    return text;
}

} // namespace vex
