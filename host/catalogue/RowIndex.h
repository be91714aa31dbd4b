#pragma once

#include "I18NHash.h"
#include "I18NString.h"
#include "host/store/build/GrowingHash.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace vex {

/// Finds rows by a text of theirs without going through the others: there may be as many who
/// ask as there are rows. Worked out when it is first asked, and anew when rows were added. A
/// copy works it out for itself. Threads: any may ask at once, while the rows stay as they are.
template <class Row, I18NString Row::*Key> class RowIndex {
public:
    RowIndex() = default;
    RowIndex(RowIndex const& /*other*/) noexcept {}
    RowIndex& operator=(RowIndex const& /*other*/) noexcept {
        m_known.reset();
        return *this;
    }
    ~RowIndex() = default;

    /// The place of the first of the rows that have the key, or `NotFound`.
    std::uint32_t findFirst(std::vector<Row> const& rows, I18NString const& key) const {
        std::lock_guard const lock(m_mutex);
        if (m_known == nullptr || m_known->next.size() != rows.size()) {
            make(rows);
        }
        return placeOf(m_known->first, rows, key);
    }

    /// The place of another one that has the key of the row there, or `NotFound`: all of them
    /// one after the other, in no order. Not before `findFirst`.
    std::uint32_t findNext(std::uint32_t place) const { return m_known->next[place]; }

private:
    static std::uint32_t hashOf(I18NString const& key) {
        return static_cast<std::uint32_t>(I18NTextHasher{}(key.view()));
    }

    static std::uint32_t placeOf(GrowingHash const& first, std::vector<Row> const& rows,
                                 I18NString const& key) {
        return first.find(hashOf(key),
                          [&](std::uint32_t place) { return rows[place].*Key == key; });
    }

    /// Held apart: there are many indexes that nobody asks.
    struct Known {
        GrowingHash first{};               // a place for each key
        std::vector<std::uint32_t> next{}; // by the place of a row
    };

    void make(std::vector<Row> const& rows) const {
        auto known = std::make_unique<Known>();
        known->next.assign(rows.size(), NotFound);
        for (std::uint32_t place = 0; place < rows.size(); ++place) {
            std::uint32_t const same = placeOf(known->first, rows, rows[place].*Key);
            if (same == NotFound) {
                known->first.add(hashOf(rows[place].*Key), place);
            } else {
                known->next[place] = std::exchange(known->next[same], place);
            }
        }
        m_known = std::move(known);
    }

    mutable std::mutex m_mutex;
    mutable std::unique_ptr<Known const> m_known; // null before the first question
};

} // namespace vex
