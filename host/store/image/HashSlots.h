#pragma once

#include "host/store/image/CompactArray.h"

#include <cstdint>

namespace vex {

constexpr std::uint32_t NotFound = 0xFFFF'FFFF;

/// A hash table from hashes to numbers below `NotFound`, to be looked up. What a
/// number stands for is the user's: one table can serve any kind of key. A
/// `GrowingHash` becomes one.
class HashSlots {
public:
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

    std::size_t byteCount() const { return m_slots.byteCount(); }

private:
    friend class GrowingHash;

    struct Slot {
        std::uint32_t hash;
        std::uint32_t number;
    };

    CompactArray<Slot> m_slots; // a power of two of them, at least half of them free
    std::size_t m_mask = 0;
};

} // namespace vex
