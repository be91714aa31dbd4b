#pragma once

#include "VexVariant.h"

#include <cstddef>
#include <vector>

/// The parameters of an action, in order. An index past the end gives an empty
/// variant, so that a missing parameter looks like one of the wrong type.
class VexParams {
public:
    /// The parameter at `index`, empty past the end. Valid until the list is changed.
    VexVariant const& operator[](std::size_t index) const {
        static constexpr VexVariant none{};
        return index < m_values.size() ? m_values[index] : none;
    }
    /// Adds at the end. What a string or node variant points to is not copied.
    void AddParam(VexVariant const& value) { m_values.push_back(value); }
    /// How many were added.
    std::size_t size() const { return m_values.size(); }
    /// Drops all of them.
    void clear() { m_values.clear(); }

private:
    std::vector<VexVariant> m_values;
};
