#include "tests/naive/Text.h"

#include <cstdlib>

#include <unicode/uchar.h>
#include <unicode/uloc.h>
#include <unicode/unistr.h>
#include <xercesc/util/XMLChar.hpp>

namespace naive {

std::string toUtf8(Text const& text) {
    std::string result;
    icu::UnicodeString(text.data(), static_cast<int32_t>(text.size())).toUTF8String(result);
    return result;
}

Text fromUtf8(std::string const& text) {
    icu::UnicodeString const units = icu::UnicodeString::fromUTF8(text);
    return Text(units.getBuffer(), static_cast<std::size_t>(units.length()));
}

int findText(Text const& text, Text const& what, int from) {
    std::size_t const found = text.find(what, static_cast<std::size_t>(from < 0 ? 0 : from));
    return found == Text::npos ? -1 : static_cast<int>(found);
}

Text substring(Text const& text, int start, int length) {
    std::size_t const first = static_cast<std::size_t>(start < 0 ? 0 : start);
    if (first >= text.size()) {
        return Text();
    }
    return length < 0 ? text.substr(first) : text.substr(first, static_cast<std::size_t>(length));
}

bool startsWith(Text const& text, Text const& prefix) {
    return findText(text, prefix) == 0;
}

Text trimmed(Text const& text) {
    std::size_t first = 0;
    std::size_t last = text.size();
    while (first < last && u_isUWhiteSpace(text[first])) {
        ++first;
    }
    while (last > first && u_isUWhiteSpace(text[last - 1])) {
        --last;
    }
    return text.substr(first, last - first);
}

bool splitStartPath(Text const& path, Texts& parts) {
    enum class State { ExpectingBracket, InsideName, AfterBracket };
    State state = State::ExpectingBracket;
    for (std::size_t i = 0; i < path.size(); ++i) {
        char16_t const unit = path[i];
        if (state == State::ExpectingBracket && unit == u'[') {
            parts.push_back(Text());
            state = State::InsideName;
        } else if (state == State::InsideName && unit == u']' && i + 1 < path.size() &&
                   path[i + 1] == u']') {
            parts.back() += u']';
            ++i;
        } else if (state == State::InsideName && unit == u']') {
            state = State::AfterBracket;
        } else if (state == State::AfterBracket && unit == u'.') {
            state = State::ExpectingBracket;
        } else if (state != State::InsideName && u_isUWhiteSpace(unit)) {
            continue;
        } else if (state == State::InsideName) {
            parts.back() += unit;
        } else {
            return false;
        }
    }
    return path.empty() || state == State::AfterBracket;
}

bool isXmlName(Text const& text) {
    return !text.empty() && xercesc::XMLChar1_0::isValidName(text.data(), text.size());
}

Text canonicalLocale(Text const& name) {
    char canonical[ULOC_FULLNAME_CAPACITY] = {};
    UErrorCode status = U_ZERO_ERROR;
    uloc_canonicalize(toUtf8(name).c_str(), canonical, ULOC_FULLNAME_CAPACITY - 1, &status);
    return fromUtf8(canonical);
}

Text parentLocale(Text const& name) {
    std::size_t const cut = name.rfind(u'_');
    return cut == Text::npos ? Text() : name.substr(0, cut);
}

long leadingInteger(Text const& text) {
    return std::strtol(toUtf8(text).c_str(), nullptr, 10);
}

Text joined(Texts const& items) {
    Text result;
    for (std::size_t i = 0; i < items.size(); ++i) {
        result += items[i];
        if (i + 1 < items.size()) {
            result += u", ";
        }
    }
    return result;
}

} // namespace naive
