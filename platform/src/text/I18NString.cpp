#include "I18NString.h"

#include <algorithm>
#include <climits>
#include <new>
#include <stdexcept>

namespace {

int checkedLength(std::size_t length) {
    if (length >= INT_MAX) {
        throw std::length_error("a string holds fewer than 2147483647 code units");
    }
    return static_cast<int>(length);
}

// The copy of an alias takes as much room as the text needs; building from the
// characters directly takes room for growth as well.
icu::UnicodeString compactCopy(std::u16string_view text) {
    icu::UnicodeString const alias(false, text.data(), checkedLength(text.size()));
    return icu::UnicodeString(alias);
}

int indexOrNone(std::size_t found) {
    return found == std::u16string_view::npos ? -1 : static_cast<int>(found);
}

std::size_t startIndex(int from) {
    return static_cast<std::size_t>(std::max(from, 0));
}

} // namespace

I18NString::I18NString(char const* utf8)
    : I18NString(fromUtf8(utf8 == nullptr ? std::string_view() : std::string_view(utf8))) {}

I18NString::I18NString(char16_t const* text, int length)
    : I18NString(text == nullptr
                     ? std::u16string_view()
                     : std::u16string_view(text, static_cast<std::size_t>(std::max(length, 0)))) {}

I18NString::I18NString(std::u16string_view text) : m_text(compactCopy(text)) {
    settle();
}

I18NString& I18NString::operator=(I18NString const& other) {
    m_text = other.m_text;
    dropUtf8();
    settleCopy(other);
    return *this;
}

I18NString& I18NString::operator=(I18NString&& other) noexcept {
    if (this != &other) {
        m_text = std::move(other.m_text);
        dropUtf8();
        settleMoved(other);
    }
    return *this;
}

I18NString I18NString::fromUtf8(std::string_view utf8) {
    I18NString result;
    result.m_text =
        icu::UnicodeString::fromUTF8(icu::StringPiece(utf8.data(), checkedLength(utf8.size())));
    result.settle();
    return result;
}

void I18NString::setAlias(char16_t const* text, int length) {
    m_text.setTo(true, icu::ConstChar16Ptr(text), length);
    dropUtf8();
}

int I18NString::find(I18NString const& text, int from) const {
    return text.empty() ? -1 : indexOrNone(view().find(text.view(), startIndex(from)));
}

int I18NString::find(char16_t unit, int from) const {
    return indexOrNone(view().find(unit, startIndex(from)));
}

I18NString I18NString::substring(int start, int length) const {
    std::size_t const first = startIndex(start);
    if (first >= view().size()) {
        return {};
    }
    std::size_t const count =
        length < 0 ? std::u16string_view::npos : static_cast<std::size_t>(length);
    if (first == 0 && count >= view().size()) {
        return *this;
    }
    return I18NString(view().substr(first, count));
}

I18NString& I18NString::replace(int start, int length, I18NString const& text) {
    m_text.replace(start, length, text.m_text);
    changed();
    return *this;
}

I18NString& I18NString::append(I18NString const& text) {
    m_text.append(text.m_text);
    changed();
    return *this;
}

I18NString& I18NString::append(char16_t unit) {
    m_text.append(unit);
    changed();
    return *this;
}

I18NString& I18NString::append(std::u16string_view text) {
    m_text.append(text.data(), checkedLength(text.size()));
    changed();
    return *this;
}

I18NString& I18NString::appendCodePoint(char32_t codePoint) {
    m_text.append(static_cast<UChar32>(codePoint));
    changed();
    return *this;
}

I18NString operator+(I18NString const& a, I18NString const& b) {
    I18NString result(a);
    result.append(b);
    return result;
}

bool operator==(I18NString const& a, char const* utf8) {
    constexpr unsigned firstBeyondAscii = 0x80;
    if (utf8 == nullptr) {
        return a.empty();
    }
    std::u16string_view const text = a.view();
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned const byte = static_cast<unsigned char>(utf8[i]);
        if (byte >= firstBeyondAscii) {
            // What stands before is equal, so the rest decides.
            return text.substr(i) == I18NString(utf8 + i).view();
        }
        if (byte != text[i] || byte == 0) {
            return false;
        }
    }
    return utf8[text.size()] == 0;
}

std::string I18NString::toUtf8() const {
    std::string utf8;
    m_text.toUTF8String(utf8);
    return utf8;
}

char const* I18NString::c_str() const {
    char* cached = m_utf8.load(std::memory_order_acquire);
    if (cached != nullptr) {
        return cached;
    }
    std::string const utf8 = toUtf8();
    char* const made = new char[utf8.size() + 1];
    std::copy_n(utf8.c_str(), utf8.size() + 1, made);
    if (m_utf8.compare_exchange_strong(cached, made, std::memory_order_acq_rel,
                                       std::memory_order_acquire)) {
        return made;
    }
    delete[] made;
    return cached;
}

void I18NString::freeUtf8() noexcept {
    delete[] m_utf8.exchange(nullptr, std::memory_order_relaxed);
}

// ICU makes room for the terminator alone, and would move the whole text again at
// the next change, and at each one after it.
void I18NString::makeRoom() {
    int const length = m_text.length();
    if (m_text.getCapacity() == length && length < INT_MAX / 2) {
        m_text.getBuffer(length + length / 2);
        m_text.releaseBuffer(length);
    }
}

void I18NString::terminate() {
    // ICU answers a failed allocation with a string that ignores all changes.
    if (m_text.getTerminatedBuffer() == nullptr) {
        clear();
        throw std::bad_alloc();
    }
}
