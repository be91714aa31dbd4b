#pragma once

#include "host/store/image/HashSlots.h"

#include <utility>

namespace vex {

/// A hash table that numbers are added to.
class GrowingHash {
public:
    GrowingHash() { rehash(FirstSlotCount); }

    /// Makes room for `count` numbers in all.
    void reserve(std::size_t count) {
        std::size_t slots = m_table.m_slots.size();
        while (slots < 2 * count) {
            slots *= 2;
        }
        if (slots != m_table.m_slots.size()) {
            rehash(slots);
        }
    }

    /// The number with that hash for which `matches` holds, or `NotFound`.
    template <typename Matches> std::uint32_t find(std::uint32_t hash, Matches matches) const {
        return m_table.find(hash, matches);
    }

    /// Brings where `find` will begin nearer to the processor.
    void prefetch(std::uint32_t hash) const {
        __builtin_prefetch(m_table.m_slots.data() + (hash & m_table.mask()));
    }

    /// The number that `find` will look at first, or `NotFound`.
    std::uint32_t first(std::uint32_t hash) const {
        return m_table.m_slots[hash & m_table.mask()].number;
    }

    void add(std::uint32_t hash, std::uint32_t number) {
        ++m_count;
        if (2 * m_count > m_table.m_slots.size()) {
            rehash(2 * m_table.m_slots.size());
        }
        insert({hash, number});
    }

    HashSlots finish() && { return std::move(m_table); }

private:
    static constexpr std::size_t FirstSlotCount = 64;

    void insert(HashSlots::Slot slot) {
        std::size_t const mask = m_table.mask();
        std::size_t at = slot.hash & mask;
        while (m_table.m_slots[at].number != NotFound) {
            at = (at + 1) & mask;
        }
        m_table.m_slots[at] = slot;
    }

    void rehash(std::size_t slotCount) {
        CompactArray<HashSlots::Slot> old;
        old.swap(m_table.m_slots);
        m_table.m_slots.assign(slotCount, {0, NotFound});
        for (HashSlots::Slot const& slot : old) {
            if (slot.number != NotFound) {
                insert(slot);
            }
        }
    }

    HashSlots m_table;
    std::size_t m_count = 0;
};

} // namespace vex
