#pragma once

#include "HashSlots.h"
#include "I18NString.h"
#include "SameText.h"
#include "TextHash.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace vex {

/// Names one text of a `TextTable`. 0 is the empty text.
using TextRef = std::uint32_t;

/// The texts of a model, each once, in UTF-16 with a zero behind it: they are
/// handed out as they lie here.
class TextTable {
public:
    TextTable() = default;
    explicit TextTable(CompactArray<char16_t> units) : m_units(std::move(units)) {}

    char16_t const* begin(TextRef text) const { return m_units.data() + text; }
    std::u16string_view view(TextRef text) const { return {begin(text), length(begin(text))}; }
    bool equals(TextRef text, std::u16string_view other) const {
        // Texts that differ mostly do so at once.
        return (other.size() < BlockUnits ||
                std::memcmp(begin(text), other.data(), BlockUnits * sizeof(char16_t)) == 0) &&
               isSameText(view(text), other);
    }
    void give(TextRef text, I18NString& target) const {
        std::u16string_view const shown = view(text);
        target.setAlias(shown.data(), static_cast<int>(shown.size()));
    }

    std::size_t byteCount() const { return m_units.byteCount(); }

private:
    friend class TextTableBuilder;
    static constexpr std::size_t BlockUnits = sizeof(std::uint64_t) / sizeof(char16_t);

    // No text holds a zero: XML knows none. Four units are looked at together,
    // so as many stand behind the last text.
    static std::size_t length(char16_t const* text) {
        if constexpr (std::endian::native == std::endian::little) {
            constexpr std::uint64_t ones = 0x0001'0001'0001'0001;
            constexpr std::uint64_t signs = ones << 15U;
            for (std::size_t count = 0;; count += BlockUnits) {
                std::uint64_t block = 0;
                std::memcpy(&block, text + count, sizeof block);
                std::uint64_t const zeros = (block - ones) & ~block & signs;
                if (zeros != 0) {
                    return count + static_cast<std::size_t>(std::countr_zero(zeros)) / 16;
                }
            }
        } else {
            return std::char_traits<char16_t>::length(text);
        }
    }

    CompactArray<char16_t> m_units;
};

/// Collects texts; what was added before is not added again.
class TextTableBuilder {
public:
    TextTableBuilder();

    /// The hash that `add` takes. Fetches what `add` will look at, so that it
    /// need not wait if something else is done in between.
    std::uint32_t prepare(std::u16string_view text) const {
        std::uint32_t const hash = static_cast<std::uint32_t>(hashText(text, m_seed));
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
        return add(text, static_cast<std::uint32_t>(hashText(text, m_seed)));
    }

    /// Valid until a text is added.
    char16_t const* begin(TextRef text) const { return m_units.data() + text; }

    /// Makes room for about `texts` texts with `units` code units in all.
    void reserve(std::size_t texts, std::size_t units) {
        m_found.reserve(texts);
        m_units.reserve(units);
    }

    /// Ends the building: the table that finds texts is dropped.
    TextTable finish() &&;

private:
    CompactArray<char16_t> m_units;
    HashSlots m_found;
    std::uint64_t m_seed;
};

/// Adds texts to a table in batches. Where the table keeps a text is far from
/// where it keeps the one before; a batch waits for all of its places at once.
class TextQueue {
public:
    /// Stands for a text before its place is known: 0 for the empty one.
    using Ticket = std::uint32_t;

    explicit TextQueue(TextTableBuilder& texts) : m_texts(texts) { m_places.push_back(0); }

    Ticket add(std::u16string_view text);
    /// A ticket for a text whose place is known.
    Ticket add(TextRef place);

    /// Where the text is; every batch was ended by `finish` before.
    TextRef place(Ticket ticket) const { return m_places[ticket]; }
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
    CompactArray<TextRef> m_places; // by ticket
    CompactArray<Waiting> m_batch;
    CompactArray<char16_t> m_units; // of the batch
};

} // namespace vex
