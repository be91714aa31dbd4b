#pragma once

#include "host/store/image/NameTable.h"

#include <cstdint>
#include <span>

namespace vex {

/// What an owner of properties says about one of its values.
struct ShapeEntry {
    Atom name;
    std::uint32_t locale; // see `StoreData::locales`; 0: not localised
    TextRef role;         // 0: none
};

/// The values of an element that are not simple properties. They come first
/// among its values, in this order, each only when the element has it.
enum class Own : unsigned { Id, Role, Class, Text };
constexpr unsigned OwnCount = 4;

/// What all elements with the same class and the same list of properties have in
/// common: their values lie in this order.
struct Shape {
    Atom cls; // NoAtom: a property with sub-properties
    std::uint32_t firstEntry;
    std::uint32_t entryCount; // own values counted
    std::uint32_t firstListed;
    std::uint32_t listedCount;
    std::uint32_t firstName; // in `byName`: where the values of the property "name" stand
    std::uint32_t nameCount;
    std::uint8_t own;      // bit for each `Own`
    std::uint8_t ownCount; // of bits in `own`
    std::uint16_t unused;  // always 0: an image holds no memory that nobody set

    bool has(Own which) const { return (own >> static_cast<unsigned>(which) & 1U) != 0; }
    /// The index of an own value among the owner's values.
    unsigned ownOffset(Own which) const {
        // Counts the four bits without the library's call for them.
        constexpr std::uint64_t countOfBits = 0x4332'3221'3221'2110;
        unsigned const before = own & ((1U << static_cast<unsigned>(which)) - 1U);
        return countOfBits >> (4U * before) & 0xFU;
    }
};

/// The shapes of a model, each once.
class ShapeTable {
public:
    Shape const& operator[](std::uint32_t shape) const { return m_shapes[shape]; }
    std::size_t size() const { return m_shapes.size(); }

    std::span<ShapeEntry const> entries(Shape const& shape) const {
        return {m_entries.data() + shape.firstEntry, shape.entryCount};
    }
    /// The entries without those of own values.
    std::span<ShapeEntry const> simple(Shape const& shape) const {
        return entries(shape).subspan(shape.ownCount);
    }
    /// The offsets of the values that a list of properties shows.
    std::span<std::uint32_t const> listed(Shape const& shape) const {
        return {m_listed.data() + shape.firstListed, shape.listedCount};
    }
    /// The offsets of the simple properties, by name, those of one name by the
    /// number of their locale, those that are not localised in document order.
    std::span<std::uint32_t const> byName(Shape const& shape) const {
        return {m_byName.data() + shape.firstEntry, shape.entryCount - shape.ownCount};
    }
    /// The part of `byName` that has this name.
    std::span<std::uint32_t const> named(Shape const& shape, Atom name) const;
    /// The same for the property "name", which by far the most is asked for.
    std::span<std::uint32_t const> namedName(Shape const& shape) const {
        return {m_byName.data() + shape.firstName, shape.nameCount};
    }

    void shrink();
    std::size_t byteCount() const;

    /// What an entry may name.
    struct Bounds {
        std::size_t names;
        std::size_t locales; // numbers up to this
        std::size_t texts;
    };
    /// Says what is wrong with a table that was read; null when it can be used.
    char const* complaint(Bounds const& bounds) const;

    /// Shows each array to who writes or reads them.
    template <typename Self, typename Visit> static void visitArrays(Self& self, Visit& visit) {
        visit(self.m_shapes);
        visit(self.m_entries);
        visit(self.m_listed);
        visit(self.m_byName);
    }

private:
    friend class ShapeTableBuilder;

    char const* complaintAbout(Shape const& shape) const;

    CompactArray<Shape> m_shapes;
    CompactArray<ShapeEntry> m_entries;
    CompactArray<std::uint32_t> m_listed;
    CompactArray<std::uint32_t> m_byName; // as long as m_entries, those of own values unused
};

} // namespace vex
