#pragma once

#include "host/store/image/StoreIndex.h"

#include <utility>

namespace vex {

/// Makes a hash table of a known number of entries.
class FixedHashBuilder {
public:
    explicit FixedHashBuilder(std::size_t count) {
        constexpr std::size_t slots = 5; // for every 4 entries, so that some stay free
        m_table.m_slots.assign(count + count / (slots - 1) + 1, NotFound);
    }

    void add(std::uint64_t hash, std::uint32_t number) {
        std::size_t at = m_table.home(hash);
        while (m_table.m_slots[at] != NotFound) {
            at = m_table.next(at);
        }
        m_table.m_slots[at] = number;
    }

    /// What was added so far.
    FixedHash const& table() const { return m_table; }

    FixedHash finish() && { return std::move(m_table); }

private:
    FixedHash m_table;
};

} // namespace vex
