#pragma once

#include "host/store/image/Model.h"

#include <unordered_map>

namespace vex {

/// What an expansion goes through: from each element to its children, and from
/// a shortcut to its targets. Elements are numbered in document order.
class ExpansionGraph {
public:
    using Number = std::uint32_t;

    explicit ExpansionGraph(Model const& model);

    std::size_t size() const { return m_children.size(); }
    VEX_HANDLE element(Number number) const { return m_model.getElement(number); }

    std::vector<Number> const& children(Number number) const { return m_children[number]; }

    struct Shortcut {
        Number number;
        std::vector<Number> targets; // those that exist, in document order
    };
    /// In document order.
    std::vector<Shortcut> const& shortcuts() const { return m_shortcuts; }
    /// Null for what is no shortcut with a target.
    Shortcut const* findShortcut(Number number) const;

    /// The ways on: to the children, then to the targets.
    std::size_t wayCount(Number number) const;
    Number way(Number number, std::size_t index) const;

private:
    Model const& m_model;
    std::vector<std::vector<Number>> m_children;
    std::vector<Shortcut> m_shortcuts;
    std::unordered_map<Number, std::size_t> m_shortcutPlaces;
};

} // namespace vex
