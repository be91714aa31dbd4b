#pragma once

#include "host/store/image/Model.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vex {

/// What rules can say of the elements of a model: where they stand, and by which selectors
/// they can be meant. Elements by their index in document order.
struct ModelOutline {
    using Element = std::uint32_t;

    /// A selector that means objects by their class or by a property, wherever they stand.
    struct Trait {
        std::string selector;
        std::vector<Element> elements;
    };

    std::vector<Element> parent;
    std::vector<Element> end;    // the first element behind everything below
    std::vector<bool> isOutside; // the root, and what belongs to security views
    std::vector<bool> hasId;
    std::vector<bool> isNameable; // its reference is no other's
    std::vector<Trait> traits;    // those that mean most come first

    /// The model stays where it is.
    explicit ModelOutline(Model const& model);

    std::size_t size() const { return parent.size(); }
    bool isSelectable(Element element) const { return hasId[element] || isNameable[element]; }
    /// The selector of that element alone: its reference where it has one, else its id.
    std::string selectorOf(Element element) const;

private:
    void findReferences();
    void findTraits();

    Model const& m_model;
};

} // namespace vex
