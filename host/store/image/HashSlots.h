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
        std::size_t const mask = this->mask();
        for (std::size_t at = hash & mask; m_slots[at].number != NotFound; at = (at + 1) & mask) {
            if (m_slots[at].hash == hash && matches(m_slots[at].number)) {
                return m_slots[at].number;
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
    friend class GrowingHash;

    std::size_t mask() const { return m_slots.size() - 1; }

    struct Slot {
        std::uint32_t hash;
        std::uint32_t number;
    };

    CompactArray<Slot> m_slots; // a power of two of them, at least half of them free
};

} // namespace vex
