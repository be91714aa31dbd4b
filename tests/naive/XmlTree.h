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
    Text const* attribute(Text const& wanted) const;
};

/// Throws std::runtime_error when the text is not well-formed.
std::unique_ptr<XmlElement> parseXml(std::string const& utf8);

/// One element as text: attributes sorted by name, no indentation, an element without content as
/// an empty tag.
std::string canonicalXml(std::string const& utf8);

std::string escapedAttribute(Text const& value);
std::string escapedContent(Text const& value);

} // namespace naive
