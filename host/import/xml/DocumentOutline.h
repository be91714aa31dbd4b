#pragma once

#include "I18NString.h"
#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vex {

/// An element of an XML document, and where it stands: what a DOM does not tell.
struct OutlinedElement {
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    I18NString tag{};
    std::vector<std::pair<I18NString, I18NString>> attributes{}; // name and value, as written
    I18NString text{};            // its own, white space at its ends left out
    DocumentPosition position{};  // where its start tag ends
    std::size_t container = None; // the place in the list of the element around it
};

/// The elements of a document in the order of their start tags. Takes a few bytes for each
/// of the document, so an element is made when it is asked for.
class DocumentOutline {
public:
    std::size_t size() const { return m_elements.size(); }
    bool empty() const { return m_elements.empty(); }
    OutlinedElement operator[](std::size_t number) const;

    /// Makes room for texts of so many units, which saves copies as they grow.
    void reserveTexts(std::size_t units) { m_texts.reserve(units); }

    /// Adds an element with its attributes; its text comes when it is known.
    void add(OutlinedElement const& element);
    void setText(std::size_t number, std::u16string_view text);

private:
    /// A part of all texts.
    struct Part {
        std::uint32_t begin;
        std::uint32_t length;
    };
    struct Attribute {
        Part name;
        Part value;
    };
    struct Element {
        Part tag;
        Part text;
        std::uint32_t attributesEnd;
        std::uint32_t container;
        std::uint32_t line;
        std::uint32_t column;
    };

    Part keep(std::u16string_view text);
    I18NString textOf(Part part) const;

    std::u16string m_texts;
    std::deque<Element> m_elements; // one that grows without a copy of what is there
    std::deque<Attribute> m_attributes;
};

/// The outline of a document that was read within limits before; one that cannot be read
/// gives what stands before the problem, one of more than two gibibytes nothing.
DocumentOutline outlineOf(std::string_view xml);

} // namespace vex
