#pragma once

#include "I18NHash.h"
#include "I18NString.h"
#include "host/store/image/CompactArray.h"
#include "host/store/image/SameText.h"

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

    /// The numbers of texts are below this.
    std::size_t end() const { return m_units.size() - BlockUnits; }

    /// Says what is wrong with a table that was read; null when each text up to `end` can
    /// be read.
    char const* complaint() const;

    /// Shows each array to who writes or reads them.
    template <typename Self, typename Visit> static void visitArrays(Self& self, Visit& visit) {
        visit(self.m_units);
    }

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

} // namespace vex
