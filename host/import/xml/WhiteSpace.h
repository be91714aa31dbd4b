#pragma once

#include "I18NStringIterator.h"

#include <string_view>

namespace vex {

/// What does not count at the ends of a text in a model document.
inline bool isWhiteSpace(char16_t unit) {
    constexpr char16_t firstBeyondAscii = 0x80;
    if (unit < firstBeyondAscii) {
        return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
    }
    return I18NCodePointIsWhitespace(unit);
}

/// True for a text that has none at its ends.
inline bool isTrimmed(std::u16string_view text) {
    return text.empty() || (!isWhiteSpace(text.front()) && !isWhiteSpace(text.back()));
}

} // namespace vex
