#pragma once

#include "tests/naive/Text.h"

#include <memory>
#include <utility>

namespace naive {

/// An XML element with its attributes in document order.
struct XmlElement {
    Text name;
    std::vector<std::pair<Text, Text>> attributes;
    std::vector<std::unique_ptr<XmlElement>> children;
    Text text; ///< its own character data, sub-elements left out

    /// The attribute's value, or null.
    const Text* attribute(const Text& wanted) const;
};

/// Throws std::runtime_error when the text is not well-formed.
std::unique_ptr<XmlElement> parseXml(const std::string& utf8);

/// One element as text: attributes sorted by name, no indentation, an element without content as
/// an empty tag.
std::string canonicalXml(const std::string& utf8);

std::string escapedAttribute(const Text& value);
std::string escapedContent(const Text& value);

} // namespace naive
