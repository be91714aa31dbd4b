#pragma once

#include "host/store/image/StoreData.h"

#include <bit>
#include <cstdint>
#include <vector>

namespace vex {

/// A set of the elements of a model.
class ElementSet {
public:
    explicit ElementSet(std::size_t elements) : m_words(elements / WordBits + 1) {}

    /// False when it was in it before.
    bool insert(ElementNumber element) {
        std::uint64_t& word = m_words[element / WordBits];
        std::uint64_t const bit = std::uint64_t{1} << (element % WordBits);
        bool const isNew = (word & bit) == 0;
        word |= bit;
        return isNew;
    }
    void erase(ElementNumber element) {
        m_words[element / WordBits] &= ~(std::uint64_t{1} << (element % WordBits));
    }
    bool contains(ElementNumber element) const {
        return (m_words[element / WordBits] >> (element % WordBits) & 1U) != 0;
    }
    void clear() { m_words.assign(m_words.size(), 0); }

    /// In document order.
    template <class Take> void forEach(Take const& take) const {
        for (std::size_t at = 0; at < m_words.size(); ++at) {
            for (std::uint64_t word = m_words[at]; word != 0; word &= word - 1) {
                take(static_cast<ElementNumber>(at * WordBits +
                                                static_cast<std::size_t>(std::countr_zero(word))));
            }
        }
    }

private:
    static constexpr std::size_t WordBits = 64;
    std::vector<std::uint64_t> m_words;
};

} // namespace vex
