#include "apps/vexma/TreeBranches.h"

namespace vex {

TreeBranches::TreeBranches(std::vector<std::size_t> const& containers)
    : m_before(containers.size()) {
    std::vector<bool> isLast(containers.size(), true);
    std::vector<bool> hasLater(containers.size(), false);
    for (std::size_t entry = containers.size(); entry-- > 0;) {
        std::size_t const container = containers[entry];
        if (container != NoContainer) {
            isLast[entry] = !hasLater[container];
            hasLater[container] = true;
        }
    }
    std::vector<std::string> around(containers.size()); // of the members of each entry
    for (std::size_t entry = 0; entry < containers.size(); ++entry) {
        if (containers[entry] != NoContainer) {
            std::string const& outer = around[containers[entry]];
            m_before[entry] = outer + (isLast[entry] ? "└── " : "├── ");
            around[entry] = outer + (isLast[entry] ? "    " : "│   ");
        }
    }
}

} // namespace vex
