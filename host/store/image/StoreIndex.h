#pragma once

#include "host/store/image/CompactArray.h"
#include "host/store/image/HashSlots.h"

#include <cstdint>
#include <span>

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

private:
    static constexpr std::size_t WordBits = 64;
    static std::uint64_t bit(std::size_t index) { return std::uint64_t{1} << (index % WordBits); }

    CompactArray<std::uint64_t> m_words;
};

/// A hash table of a known number of entries that holds nothing but the numbers
/// of elements: whoever looks one up compares with the elements themselves.
/// Of two entries with one hash the one added first is met first.
class FixedHash {
public:
    /// Room for `count` entries.
    void reserve(std::size_t count) {
        constexpr std::size_t slots = 5; // for every 4 entries, so that some stay free
        m_slots.assign(count + count / (slots - 1) + 1, NotFound);
    }

    void add(std::uint64_t hash, std::uint32_t number) {
        std::size_t at = home(hash);
        while (m_slots[at] != NotFound) {
            at = next(at);
        }
        m_slots[at] = number;
    }

    template <typename Matches> std::uint32_t find(std::uint64_t hash, Matches matches) const {
        for (std::size_t at = home(hash); m_slots[at] != NotFound; at = next(at)) {
            if (matches(m_slots[at])) {
                return m_slots[at];
            }
        }
        return NotFound;
    }

    std::size_t byteCount() const { return m_slots.byteCount(); }

private:
    std::size_t home(std::uint64_t hash) const {
        constexpr unsigned half = 32;
        return static_cast<std::size_t>(((hash >> half) * m_slots.size()) >> half);
    }
    std::size_t next(std::size_t at) const { return at + 1 == m_slots.size() ? 0 : at + 1; }

    CompactArray<std::uint32_t> m_slots;
};

/// The elements of each class in document order.
class ClassIndex {
public:
    /// `classOf(element)` gives a class below `classCount`.
    template <typename ClassOf>
    void build(std::size_t classCount, std::size_t elementCount, ClassOf classOf) {
        m_first.assign(classCount + 1, 0);
        for (std::uint32_t element = 0; element < elementCount; ++element) {
            ++m_first[classOf(element) + 1];
        }
        for (std::size_t cls = 0; cls < classCount; ++cls) {
            m_first[cls + 1] += m_first[cls];
        }
        m_elements.extend(elementCount);
        // Each class's start runs to its end while its elements are put in ...
        for (std::uint32_t element = 0; element < elementCount; ++element) {
            m_elements[m_first[classOf(element)]++] = element;
        }
        // ... which is the start of the next one.
        for (std::size_t cls = classCount; cls > 0; --cls) {
            m_first[cls] = m_first[cls - 1];
        }
        m_first[0] = 0;
        m_first.shrink();
        m_elements.shrink();
    }

    std::span<std::uint32_t const> operator[](std::uint32_t cls) const {
        return {m_elements.data() + m_first[cls], m_first[cls + 1] - m_first[cls]};
    }

    std::size_t byteCount() const { return m_first.byteCount() + m_elements.byteCount(); }

private:
    CompactArray<std::uint32_t> m_first; // by class, and one more
    CompactArray<std::uint32_t> m_elements;
};

} // namespace vex
