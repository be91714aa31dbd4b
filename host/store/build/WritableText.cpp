#include "host/store/build/WritableText.h"

namespace vex {

namespace {

constexpr char16_t firstPrintable = u' ';
constexpr char16_t firstHighSurrogate = 0xD800;
constexpr char16_t firstLowSurrogate = 0xDC00;
constexpr char16_t firstBehindSurrogates = 0xE000;
constexpr char16_t lastWritable = 0xFFFD;

bool isLowSurrogate(char16_t unit) {
    return unit >= firstLowSurrogate && unit < firstBehindSurrogates;
}

} // namespace

std::size_t findUnwritable(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        char16_t const unit = text[i];
        if (unit < firstPrintable) {
            if (unit != u'\t' && unit != u'\n' && unit != u'\r') {
                return i;
            }
        } else if (unit >= firstHighSurrogate && unit < firstBehindSurrogates) {
            if (unit >= firstLowSurrogate || i + 1 == text.size() || !isLowSurrogate(text[i + 1])) {
                return i;
            }
            ++i; // over its other half
        } else if (unit > lastWritable) {
            return i;
        }
    }
    return std::u16string_view::npos;
}

} // namespace vex
