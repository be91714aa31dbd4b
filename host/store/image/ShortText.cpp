#include "host/store/image/ShortText.h"

namespace vex {

namespace {

constexpr std::size_t most = 200;
constexpr std::size_t atTheEnd = 60;

bool isLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace

std::string shortened(std::u16string_view text) {
    if (text.size() <= most) {
        return I18NString(text).toUtf8();
    }
    std::size_t first = most - atTheEnd;
    std::size_t last = text.size() - atTheEnd;
    first -= isLowSurrogate(text[first]) ? 1 : 0; // pairs stay whole
    last += isLowSurrogate(text[last]) ? 1 : 0;
    return I18NString(text.substr(0, first)).toUtf8() + "..." +
           I18NString(text.substr(last)).toUtf8();
}

std::string quotedShort(I18NString const& text) {
    return '"' + shortened(text.view()) + '"';
}

} // namespace vex
