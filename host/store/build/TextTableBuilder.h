#pragma once

#include "I18NHash.h"
#include "host/store/build/GrowingHash.h"
#include "host/store/image/TextTable.h"

#include <cstdint>
#include <string_view>

namespace vex {

/// Collects texts; what was added before is not added again.
class TextTableBuilder {
public:
    explicit TextTableBuilder(std::uint64_t seed);

    /// The hash that `add` takes. Fetches what `add` will look at, so that it
    /// need not wait if something else is done in between.
    std::uint32_t prepare(std::u16string_view text) const {
        std::uint32_t const hash = static_cast<std::uint32_t>(I18NHashText(text, m_seed));
        m_found.prefetch(hash);
        return hash;
    }

    /// Goes a step further: fetches the text that `add` will compare with.
    void prepareComparison(std::uint32_t hash) const {
        TextRef const first = m_found.first(hash);
        if (first != NotFound) {
            __builtin_prefetch(m_units.data() + first);
        }
    }

    /// Raises `KRLLimitException` when the texts of one model are more than can
    /// be numbered.
    TextRef add(std::u16string_view text, std::uint32_t hash);
    TextRef add(std::u16string_view text) {
        return add(text, static_cast<std::uint32_t>(I18NHashText(text, m_seed)));
    }

    /// The number of a text that was added, or `NotFound`.
    TextRef find(std::u16string_view text) const {
        return text.empty() ? 0
                            : find(text, static_cast<std::uint32_t>(I18NHashText(text, m_seed)));
    }

    /// Valid until a text is added.
    char16_t const* begin(TextRef text) const { return m_units.data() + text; }

    /// The numbers of texts are below this.
    std::size_t end() const { return m_units.size(); }

    /// Makes room for about `texts` texts with `units` code units in all.
    void reserve(std::size_t texts, std::size_t units) {
        m_found.reserve(texts);
        m_units.reserve(units);
    }

    /// Ends the building: the table that finds texts is dropped.
    TextTable finish() &&;

private:
    TextRef find(std::u16string_view text, std::uint32_t hash) const;

    CompactArray<char16_t> m_units;
    GrowingHash m_found;
    std::uint64_t m_seed;
};

/// Adds texts to a table in batches. Where the table keeps a text is far from
/// where it keeps the one before; a batch waits for all of them at once.
class TextQueue {
public:
    /// Stands for a text before the table has it: 0 for the empty one.
    using Ticket = std::uint32_t;

    explicit TextQueue(TextTableBuilder& texts) : m_texts(texts) { m_added.push_back(0); }

    Ticket add(std::u16string_view text);
    /// A ticket for a text that the table has.
    Ticket add(TextRef text);

    /// The text; every batch was ended by `finish` before.
    TextRef operator[](Ticket ticket) const { return m_added[ticket]; }
    void finish();

private:
    static constexpr std::size_t BatchSize = 32;

    struct Waiting {
        std::size_t firstUnit;
        std::size_t length;
        std::uint32_t hash;
        Ticket ticket;
    };

    Ticket next();

    TextTableBuilder& m_texts;
    CompactArray<TextRef> m_added; // by ticket
    CompactArray<Waiting> m_batch;
    CompactArray<char16_t> m_units; // of the batch
};

} // namespace vex
