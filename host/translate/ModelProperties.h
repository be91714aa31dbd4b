#pragma once

#include "I18NLocale.h"
#include "host/import/xml/ElementTree.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vex {

/// The properties that hold words for people.
std::span<std::string_view const> translatedProperties();
/// The place in that list; nothing for another one.
std::optional<std::size_t> findTranslatedProperty(std::string_view name);

bool isPropertyElement(ElementTree const& tree, ElementTree::Element element);
/// True for an element of a model document that stands for an object.
bool isObjectElement(ElementTree const& tree, ElementTree::Element element);

/// The language of a `property` element; the nameless one for all of them.
I18NLocale localeOfProperty(ElementTree const& tree, ElementTree::Element property);

/// The value of an object's property in exactly that language; nothing without one.
std::optional<std::string> valueIn(ElementTree const& tree, ElementTree::Element object,
                                   std::string_view property, I18NLocale locale);
/// The value that counts for a language; "" without one.
std::string valueFor(ElementTree const& tree, ElementTree::Element object,
                     std::string_view property, I18NLocale locale);

} // namespace vex
