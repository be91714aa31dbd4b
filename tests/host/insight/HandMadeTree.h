#pragma once

#include "host/insight/AnsweredTree.h"

#include <vector>

namespace vex {

/// An entry of a tree answer, its objects named by their ids.
struct MetObject {
    static constexpr std::size_t Nowhere = AnsweredObject::None;

    char const* id;
    ObjectFate fate = ObjectFate::Written;
    std::size_t container = Nowhere; // its place in the list
    bool behindShortcut = false;
    char const* target = nullptr; // of a shortcut
};

inline AnsweredTree treeOf(Model const& model, std::vector<MetObject> const& met) {
    AnsweredTree tree;
    for (MetObject const& each : met) {
        AnsweredObject& entry = tree.emplace_back();
        entry.object = model.findById(each.id);
        entry.fate = each.fate;
        entry.container = each.container;
        entry.behindShortcut = each.behindShortcut;
        if (each.target != nullptr) {
            entry.target = model.findById(each.target);
        }
    }
    return tree;
}

} // namespace vex
