#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vex {

/// The lines that are drawn in front of the entries of a tree.
class TreeBranches {
public:
    static constexpr std::size_t NoContainer = static_cast<std::size_t>(-1);

    /// The container of each entry, as its place in the list. An entry stands
    /// behind its container and all that is in its earlier siblings.
    explicit TreeBranches(std::vector<std::size_t> containers);

    /// What stands before an entry; "" for one without a container.
    std::string before(std::size_t entry) const;

private:
    std::vector<std::size_t> m_containers;
    std::vector<bool> m_isLast; // in its container
};

} // namespace vex
