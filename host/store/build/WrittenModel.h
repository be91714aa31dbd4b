#pragma once

#include "I18NLocale.h"
#include "host/store/build/TextTableBuilder.h"
#include "host/store/image/StoreData.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace vex {

class StoreBuilder;

/// What a `ModelWriter` has written, before the model is made: elements by their
/// numbers, the root at 0, which is still open. Texts are kept once, so that equal
/// ones have one number.
class WrittenModel {
public:
    /// The store stays where it is.
    WrittenModel(StoreBuilder& store, I18NLocale defaultLocale);

    /// The elements that are there now; what is added later is not looked at.
    ElementNumber elementCount() const { return m_count; }
    ElementNumber parent(ElementNumber element) const { return m_elements[element].parent; }
    /// The first element behind everything below.
    ElementNumber end(ElementNumber element) const {
        return element == 0 ? m_count : m_elements[element].end;
    }
    DocumentPosition position(ElementNumber element) const; // line 0: unknown

    /// @{
    /// Elements with the same class and the same list of properties have one shape:
    /// its entries say which value stands where.
    std::uint32_t shapeNumber(ElementNumber element) const { return m_elements[element].shape; }
    std::size_t shapeCount() const { return m_shapes.size(); }
    Shape const& shape(std::uint32_t number) const { return m_shapes[number]; }
    std::span<ShapeEntry const> entries(Shape const& shape) const {
        return m_shapes.entries(shape);
    }
    TextRef value(ElementNumber element, std::uint32_t offset) const {
        return m_queue[m_flushed[m_elements[element].firstValue + offset]];
    }
    /// @}

    Atom classOf(ElementNumber element) const { return shape(shapeNumber(element)).cls; }
    TextRef idOf(ElementNumber element) const { // 0: none
        Shape const& of = shape(shapeNumber(element));
        return of.has(Own::Id) ? value(element, of.ownOffset(Own::Id)) : 0;
    }
    /// The name that references name it by, in the default language; 0 without one.
    TextRef nameOf(ElementNumber element) const {
        std::uint32_t& offset = m_nameOffsets[shapeNumber(element)];
        if (offset == NotLooked) {
            offset = findNameOffset(shape(shapeNumber(element)));
        }
        return offset == NotFound ? 0 : value(element, offset);
    }

    /// The numbers of texts are below this.
    std::size_t textEnd() const;
    /// A zero stands behind it. Valid until a text is added.
    std::u16string_view text(TextRef text) const;
    std::u16string_view className(ElementNumber element) const;

    /// @{
    /// The number of a text, or of the name of a class or property, to compare with; that
    /// of all that the model does not say is one which no object has. Nothing is added.
    TextRef numberOf(std::u16string_view text) const;
    Atom nameNumberOf(std::u16string_view name) const;
    /// @}

    /// True when an element has this id, those added later too.
    bool isId(TextRef text) const;

    I18NLocale defaultLocale() const { return m_defaultLocale; }

private:
    std::uint32_t findNameOffset(Shape const& shape) const;

    static constexpr std::uint32_t NotLooked = NotFound - 1;

    StoreBuilder& m_store;
    // They grow while somebody looks.
    CompactArray<ElementRecord> const& m_elements;
    CompactArray<TextQueue::Ticket> const& m_flushed;
    TextQueue const& m_queue;
    ShapeTable const& m_shapes;
    I18NLocale m_defaultLocale;
    ElementNumber m_count;
    Atom m_name;
    mutable std::vector<std::uint32_t> m_nameOffsets; // by shape; `NotFound`: none
};

} // namespace vex
