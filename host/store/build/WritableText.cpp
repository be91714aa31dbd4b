#include "host/store/build/WritableText.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>

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

constexpr std::size_t unitsAtOnce = 4;

/// Whether four units may hold one that is not written as it is: below a blank, or among
/// surrogates and what follows them. Letters of Hangul look so too.
bool areSuspicious(char16_t const* units) {
    constexpr std::uint64_t each = 0x0001'0001'0001'0001;
    constexpr std::uint64_t topBits = each << 15U;
    std::uint64_t four = 0;
    std::memcpy(&four, units, sizeof four);
    std::uint64_t const below = (four - each * firstPrintable) & ~four;
    std::uint64_t const high = four & (four << 1U);
    return ((below | high) & topBits) != 0;
}

} // namespace

std::size_t findUnwritable(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        while (text.size() - i > unitsAtOnce && !areSuspicious(text.data() + i)) {
            i += unitsAtOnce;
        }
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

std::string describeUnwritable(char16_t unit) {
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), "U+%04X", static_cast<unsigned>(unit));
    return std::string("a text holds ") + code.data() +
           ", for which XML 1.0, and so an answer, has no place; remove it";
}

} // namespace vex
