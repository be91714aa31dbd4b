#pragma once

#include "host/store/image/CompactArray.h"

#include <cstdint>

namespace vex {

constexpr std::uint32_t NotFound = 0xFFFF'FFFF;

/// A growing hash table from hashes to numbers below `NotFound`. What a number
/// stands for is the user's: one table can serve any kind of key.
class HashSlots {
public:
    HashSlots() { rehash(FirstSlotCount); }

    /// Makes room for `count` numbers in all.
    void reserve(std::size_t count) {
        std::size_t slots = m_slots.size();
        while (slots < 2 * count) {
            slots *= 2;
        }
        if (slots != m_slots.size()) {
            rehash(slots);
        }
    }

    /// The number with that hash for which `matches` holds, or `NotFound`.
    template <typename Matches> std::uint32_t find(std::uint32_t hash, Matches matches) const {
        for (std::size_t at = hash & m_mask; m_slots[at].number != NotFound;
             at = (at + 1) & m_mask) {
            if (m_slots[at].hash == hash && matches(m_slots[at].number)) {
                return m_slots[at].number;
            }
        }
        return NotFound;
    }

    /// Brings where `find` will begin nearer to the processor.
    void prefetch(std::uint32_t hash) const {
        __builtin_prefetch(m_slots.data() + (hash & m_mask));
    }

    /// The number that `find` will look at first, or `NotFound`.
    std::uint32_t first(std::uint32_t hash) const { return m_slots[hash & m_mask].number; }

    void add(std::uint32_t hash, std::uint32_t number) {
        ++m_count;
        if (2 * m_count > m_slots.size()) {
            rehash(2 * m_slots.size());
        }
        place({hash, number});
    }

    std::size_t byteCount() const { return m_slots.byteCount(); }

private:
    static constexpr std::size_t FirstSlotCount = 64;

    struct Slot {
        std::uint32_t hash;
        std::uint32_t number;
    };

    void place(Slot slot) {
        std::size_t at = slot.hash & m_mask;
        while (m_slots[at].number != NotFound) {
            at = (at + 1) & m_mask;
        }
        m_slots[at] = slot;
    }

    void rehash(std::size_t slotCount) {
        CompactArray<Slot> old;
        old.swap(m_slots);
        m_slots.assign(slotCount, {0, NotFound});
        m_mask = slotCount - 1;
        for (Slot const& slot : old) {
            if (slot.number != NotFound) {
                place(slot);
            }
        }
    }

    CompactArray<Slot> m_slots;
    std::size_t m_mask = 0;
    std::size_t m_count = 0;
};

} // namespace vex
