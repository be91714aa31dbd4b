#include "host/store/image/ReferenceText.h"

#include "I18NStringIterator.h"

namespace vex {

namespace {

void append(std::u16string& text, char32_t codePoint) {
    constexpr char32_t firstPair = 0x10000;
    constexpr char32_t halfMask = 0x3FF;
    constexpr unsigned halfBits = 10;
    if (codePoint < firstPair) {
        text += static_cast<char16_t>(codePoint);
        return;
    }
    char32_t const rest = codePoint - firstPair;
    text += static_cast<char16_t>(0xD800U + (rest >> halfBits));
    text += static_cast<char16_t>(0xDC00U + (rest & halfMask));
}

// Reads up to the closing bracket; false when there is none.
bool readName(I18NStringIterator& at, std::u16string& name) {
    while (at.hasNext()) {
        char32_t const read = at.next();
        if (read == U']') {
            if (at.peek() != U']') {
                return true;
            }
            at.next();
        }
        append(name, read);
    }
    return false;
}

} // namespace

bool splitReference(I18NString const& reference, std::vector<std::u16string>& names) {
    bool behindName = false;
    I18NStringIterator at(reference);
    while (at.hasNext()) {
        char32_t const read = at.next();
        if (!behindName && read == U'[') {
            if (!readName(at, names.emplace_back())) {
                return false;
            }
            behindName = true;
        } else if (behindName && read == U'.') {
            behindName = false;
        } else if (!I18NCodePointIsWhitespace(read)) {
            return false;
        }
    }
    return behindName || reference.empty();
}

void appendToReference(I18NString& reference, std::u16string_view name) {
    if (!reference.empty()) {
        reference.append(u'.');
    }
    reference.append(u'[');
    for (char16_t const unit : name) {
        reference.append(unit);
        if (unit == u']') {
            reference.append(unit);
        }
    }
    reference.append(u']');
}

} // namespace vex
