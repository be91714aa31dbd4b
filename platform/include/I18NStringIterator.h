#pragma once

#include "I18NString.h"

/// Walks a string by code point. An unpaired surrogate is a code point of its
/// own. The string must outlive the iterator and stay unchanged meanwhile.
class I18NStringIterator {
public:
    /// Stands before the first code point.
    explicit I18NStringIterator(I18NString const& text) : m_text(text.view()) {}

    /// False at the end.
    bool hasNext() const { return m_at < m_text.size(); }

    /// The next code point, without moving; 0 at the end.
    char32_t peek() const {
        std::size_t at = m_at;
        return decode(at);
    }

    /// The next code point, moving past it; 0 at the end.
    char32_t next() { return decode(m_at); }

private:
    char32_t decode(std::size_t& at) const {
        if (at >= m_text.size()) {
            return 0;
        }
        char32_t const lead = m_text[at++];
        if ((lead & 0xFC00U) == 0xD800U && at < m_text.size()) {
            char32_t const trail = m_text[at];
            if ((trail & 0xFC00U) == 0xDC00U) {
                ++at;
                return 0x10000U + ((lead - 0xD800U) << 10U) + (trail - 0xDC00U);
            }
        }
        return lead;
    }

    std::u16string_view m_text;
    std::size_t m_at = 0;
};

/// True for the code points with the Unicode property White_Space.
VEX_PLATFORM_API bool I18NCodePointIsWhitespace(char32_t codePoint);
