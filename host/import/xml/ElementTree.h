#pragma once

#include "host/import/xml/SaxDocument.h"
#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// What a tree of elements may hold.
struct ElementLimits {
    std::size_t values = 2'000'000; // elements and attributes
    std::size_t depth = 256;
    std::size_t attributesPerElement = 128;
};

/// An XML document in memory: elements with their XML namespace, attributes, text and where
/// they stand. Elements are known by their number; the first one is the document element.
/// Texts are UTF-8.
class ElementTree {
public:
    using Element = std::uint32_t;
    static constexpr Element None = 0xFFFF'FFFF;
    static constexpr Element Root = 0;

    /// The name is as it is written, with its prefix.
    struct Attribute {
        std::string_view name;
        std::string_view value;
    };

    std::size_t size() const { return m_elements.size(); }

    /// Without its prefix, and as it is written.
    /// @{
    std::string_view nameOf(Element element) const {
        return writtenNameOf(element).substr(m_elements[element].prefix);
    }
    std::string_view writtenNameOf(Element element) const { return text(m_elements[element].name); }
    /// @}
    /// The URI of the namespace that the name is of; "" for none.
    std::string_view spaceOf(Element element) const;
    DocumentPosition positionOf(Element element) const { return m_elements[element].position; }
    /// What stands in it, without what stands in elements inside, white space and all.
    std::string textOf(Element element) const;

    /// Attributes, then what declares the prefixes of names.
    std::size_t attributeCount(Element element) const { return m_elements[element].attributes; }
    std::size_t declarationCount(Element element) const { return m_elements[element].declarations; }
    Attribute attributeOf(Element element, std::size_t number) const;
    std::optional<std::string_view> find(Element element, std::string_view attribute) const;

    /// The first of what stands in an element, and what follows it; `None` at the end.
    Element first(Element element) const { return m_elements[element].first; }
    Element next(Element element) const { return m_elements[element].next; }

private:
    friend class ElementTreeReader;

    struct Span {
        std::uint32_t start = 0;
        std::uint32_t length = 0;
    };
    struct Entry {
        Span name;
        std::uint32_t prefix = 0; // the length of it, with its colon
        std::uint32_t space = 0;
        std::uint32_t firstAttribute = 0;
        std::uint32_t attributes = 0;
        std::uint32_t declarations = 0;
        std::uint32_t firstText = None; // a chain of pieces
        std::uint32_t lastText = None;
        Element first = None;
        Element next = None;
        DocumentPosition position{};
    };
    struct AttributeEntry {
        Span name;
        Span value;
    };
    struct TextEntry {
        Span text;
        std::uint32_t next = None;
    };

    std::string_view text(Span span) const {
        return std::string_view(m_texts).substr(span.start, span.length);
    }

    std::vector<Entry> m_elements;
    std::vector<AttributeEntry> m_attributes;
    std::vector<TextEntry> m_pieces;
    std::vector<std::string> m_spaces;
    std::string m_texts;
};

/// Reads a document to its end. Raises `KRLDocumentException`, with `name` as the file, where
/// it is no XML, has a document type, a prefix that nobody declares, or more than the limits
/// allow.
ElementTree readElementTree(ByteSource& source, std::string const& name,
                            ElementLimits const& limits = {});

} // namespace vex
