#pragma once

#include "host/store/image/CompactArray.h"
#include "host/store/image/HashSlots.h"

#include <cstdint>
#include <span>
#include <utility>

namespace vex {

class BitArray {
public:
    void assign(std::size_t count) { m_words.assign(count / WordBits + 1, 0); }
    /// Makes room for `count` bits; those that are new are clear.
    void grow(std::size_t count) {
        while (m_words.size() < count / WordBits + 1) {
            m_words.push_back(0);
        }
    }
    void set(std::size_t index) { m_words[index / WordBits] |= bit(index); }
    bool operator[](std::size_t index) const {
        return (m_words[index / WordBits] & bit(index)) != 0;
    }
    std::size_t byteCount() const { return m_words.byteCount(); }

    /// True when there are as many bits as `assign` makes room for.
    bool holds(std::size_t count) const { return m_words.size() == count / WordBits + 1; }

    /// Shows each array to who writes or reads them.
    template <typename Self, typename Visit> static void visitArrays(Self& self, Visit& visit) {
        visit(self.m_words);
    }

private:
    static constexpr std::size_t WordBits = 64;
    static std::uint64_t bit(std::size_t index) { return std::uint64_t{1} << (index % WordBits); }

    CompactArray<std::uint64_t> m_words;
};

/// A hash table that holds nothing but the numbers of elements, to be looked up:
/// who looks one up compares with the elements themselves. Of two entries with
/// one hash the one added first is met first. A `FixedHashBuilder` makes one.
class FixedHash {
public:
    template <typename Matches> std::uint32_t find(std::uint64_t hash, Matches matches) const {
        for (std::size_t at = home(hash); m_slots[at] != NotFound; at = next(at)) {
            if (matches(m_slots[at])) {
                return m_slots[at];
            }
        }
        return NotFound;
    }

    std::size_t byteCount() const { return m_slots.byteCount(); }

    /// Says what is wrong with a table that was read, whose numbers are below `count`; null
    /// when it can be used.
    char const* complaint(std::size_t count) const;

    /// Shows each array to who writes or reads them.
    template <typename Self, typename Visit> static void visitArrays(Self& self, Visit& visit) {
        visit(self.m_slots);
    }

private:
    friend class FixedHashBuilder;

    std::size_t home(std::uint64_t hash) const {
        constexpr unsigned half = 32;
        return static_cast<std::size_t>(((hash >> half) * m_slots.size()) >> half);
    }
    std::size_t next(std::size_t at) const { return at + 1 == m_slots.size() ? 0 : at + 1; }

    CompactArray<std::uint32_t> m_slots; // at least one of them free
};

/// The elements of each class in document order.
class ClassIndex {
public:
    ClassIndex() = default;
    /// `elements` holds those of each class one after the other; where a class's
    /// begin stands in `first`, by class, and behind the last one where it ends.
    ClassIndex(CompactArray<std::uint32_t> first, CompactArray<std::uint32_t> elements)
        : m_first(std::move(first)), m_elements(std::move(elements)) {}

    std::span<std::uint32_t const> operator[](std::uint32_t cls) const {
        return {m_elements.data() + m_first[cls], m_first[cls + 1] - m_first[cls]};
    }

    std::size_t byteCount() const { return m_first.byteCount() + m_elements.byteCount(); }

    /// Says what is wrong with an index that was read; null when it can be used.
    char const* complaint(std::size_t classes, std::size_t elements) const;

    /// Shows each array to who writes or reads them.
    template <typename Self, typename Visit> static void visitArrays(Self& self, Visit& visit) {
        visit(self.m_first);
        visit(self.m_elements);
    }

private:
    CompactArray<std::uint32_t> m_first;
    CompactArray<std::uint32_t> m_elements;
};

} // namespace vex
