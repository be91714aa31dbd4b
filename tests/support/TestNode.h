#pragma once

#include "I18NLocale.h"
#include "I18NString.h"

#include <cstdint>
#include <optional>
#include <vector>

/// An object of a `TestModel`: an element, a value of a simple property, or the
/// collection property for one class among an element's children.
struct TestNode {
    enum class Kind { Element, Value, Collection };

    Kind kind = Kind::Element;
    std::uint32_t number = 0; // its place in the model's list of nodes
    bool valid = true;
    I18NString name; // an element's class, a property's name
    std::optional<I18NString> id;
    std::optional<I18NString> role;
    std::optional<I18NString> ownClass;
    std::optional<I18NString> value;
    std::optional<I18NLocale> locale; // of a localised value
    TestNode* parent = nullptr;
    std::vector<TestNode*> properties;  // the values of its simple properties
    std::vector<TestNode*> children;    // elements; a collection's members
    std::vector<TestNode*> collections; // its collection properties
    TestNode* idProperty = nullptr;
};
