#pragma once

#include "host/import/tabular/TabularModel.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vex {

class ImportWork;

/// What else is hidden when parts of a tabular model are: what stands in a hidden table, and
/// what names something hidden in its expression, and so on. A name that may stand for several
/// things is hidden when one of them is.
class HiddenSpread {
public:
    explicit HiddenSpread(TabularModel const& model);

    /// For each part, whether it is hidden with `first`. The steps are spent from the limit of
    /// views.
    std::vector<bool> spread(std::vector<std::size_t> const& first, ImportWork& work) const;

private:
    class Builder;

    std::size_t m_partCount;
    // Parts, then names: who is hidden with whom. A name is a node between what bears it and
    // who says it, so that there are no more of them than words.
    std::vector<std::vector<std::size_t>> m_hides;
};

} // namespace vex
