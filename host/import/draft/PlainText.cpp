#include "host/import/draft/PlainText.h"

#include "I18NString.h"
#include "I18NStringIterator.h"
#include "host/store/build/SourceReport.h"

#include <unicode/unistr.h>

namespace vex {

std::string trimmed(std::string_view text) {
    I18NString const whole = I18NString::fromUtf8(text);
    int start = 0;
    int end = whole.length();
    while (start < end && I18NCodePointIsWhitespace(whole[start])) {
        ++start;
    }
    while (end > start && I18NCodePointIsWhitespace(whole[end - 1])) {
        --end;
    }
    bool const isWhole = start == 0 && end == whole.length();
    return isWhole ? std::string(text) : whole.substring(start, end - start).toUtf8();
}

std::u16string foldedCase(std::u16string_view text) {
    icu::UnicodeString folded(text.data(), static_cast<std::int32_t>(text.size()));
    folded.foldCase();
    return {folded.getBuffer(), static_cast<std::size_t>(folded.length())};
}

std::u16string foldedCase(std::string_view text) {
    return foldedCase(I18NString::fromUtf8(text).view());
}

std::string quotedText(std::string_view text) {
    return inQuotes(I18NString::fromUtf8(text).view());
}

} // namespace vex
