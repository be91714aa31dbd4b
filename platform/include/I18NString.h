#pragma once

#include "I18NHash.h"
#include "VexExport.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

#include <unicode/unistr.h>

/// Unicode text, held as UTF-16.
///
/// Every index and length counts UTF-16 code units. A string that was filled
/// by an object-model operation may share the model's storage: it stays valid
/// while that model is loaded. Copying it (construction or assignment) makes an
/// independent string, so keep a copy, not the original, beyond the request.
///
/// Raises: what makes, copies or lengthens a text raises `std::bad_alloc` when there is no
/// memory for it, `std::length_error` when it is handed a text of 2,147,483,647 units or
/// bytes or more. A string that was being changed is "" then. What is `noexcept`, const and
/// gives no new text, or makes a view raises nothing.
///
/// Threads: const operations on one object may run at once; a changing
/// operation needs the object to itself.
class VEX_PLATFORM_API I18NString {
public:
    I18NString() noexcept = default;
    /// From UTF-8; null counts as empty. Ill-formed bytes become U+FFFD.
    I18NString(char const* utf8);
    /// Copies `length` code units.
    I18NString(char16_t const* text, int length);
    /// Copies the code units.
    explicit I18NString(std::u16string_view text);

    /// @{
    /// A copy is independent of any model. A move takes over what `other` holds,
    /// shared storage too, and leaves it empty.
    I18NString(I18NString const& other) : m_text(other.m_text) { settleCopy(other); }
    I18NString(I18NString&& other) noexcept : m_text(std::move(other.m_text)) {
        settleMoved(other);
    }
    I18NString& operator=(I18NString const& other);
    I18NString& operator=(I18NString&& other) noexcept;
    /// @}
    ~I18NString() { dropUtf8(); }

    /// From UTF-8 bytes that need no terminator.
    static I18NString fromUtf8(std::string_view utf8);

    /// Makes this string a view of `length` code units that the caller keeps
    /// alive and unchanged; `text[length]` must be 0. Nothing is copied until
    /// this string is changed or copied.
    void setAlias(char16_t const* text, int length);

    /// True for "".
    bool empty() const { return m_text.isEmpty() != 0; }
    /// How many code units; an unpaired surrogate counts too.
    int length() const { return m_text.length(); }
    /// Makes this string "".
    void clear() noexcept {
        m_text = icu::UnicodeString();
        dropUtf8();
    }

    /// The code unit at `index`; U+FFFF outside the text.
    char16_t operator[](int index) const { return m_text.charAt(index); }

    /// @{
    /// First index at or after `from` (below 0 counts as 0) where `text` stands; -1 when there is
    /// none. An empty `text` is found nowhere.
    int find(I18NString const& text, int from = 0) const;
    int find(char16_t unit, int from = 0) const;
    /// @}

    /// The part from `start`: a start below 0 counts as 0, past the end gives
    /// "", a negative length means to the end, a longer one is cut.
    I18NString substring(int start, int length = -1) const;

    /// Replaces `length` code units from `start` (cut to the text) by `text`.
    I18NString& replace(int start, int length, I18NString const& text);

    /// @{
    /// Adds at the end; gives this string.
    I18NString& append(I18NString const& text);
    I18NString& append(char16_t unit);
    I18NString& append(std::u16string_view text);
    I18NString& appendCodePoint(char32_t codePoint);
    I18NString& operator+=(I18NString const& text) { return append(text); }
    /// @}

    /// The text as UTF-8, zero-terminated. Owned by this string; valid until it
    /// is changed or destroyed.
    char const* c_str() const;
    /// A copy of the text as UTF-8.
    std::string toUtf8() const;

    /// The code units, zero-terminated. Valid until this string is changed or
    /// destroyed. This is what a DOM call takes: no conversion lies between.
    char16_t const* utf16() const { return empty() ? u"" : m_text.getBuffer(); }
    /// The code units. Valid until this string is changed or destroyed.
    std::u16string_view view() const {
        return {m_text.getBuffer(), static_cast<std::size_t>(m_text.length())};
    }

    /// Below 0, 0 or above 0: order by UTF-16 code unit.
    int compare(I18NString const& other) const { return view().compare(other.view()); }

    /// @{
    /// By UTF-16 code unit, as `compare` does.
    friend bool operator==(I18NString const& a, I18NString const& b) {
        return a.length() == b.length() &&
               std::memcmp(a.m_text.getBuffer(), b.m_text.getBuffer(),
                           static_cast<std::size_t>(a.length()) * sizeof(char16_t)) == 0;
    }
    friend bool operator!=(I18NString const& a, I18NString const& b) { return !(a == b); }
    friend bool operator<(I18NString const& a, I18NString const& b) { return a.view() < b.view(); }
    /// @}
    /// The text of `a`, then that of `b`.
    friend I18NString operator+(I18NString const& a, I18NString const& b);

    /// @{
    /// Comparison with a literal (UTF-8), without building a string for ASCII.
    friend VEX_PLATFORM_API bool operator==(I18NString const& a, char const* utf8);
    friend bool operator!=(I18NString const& a, char const* utf8) { return !(a == utf8); }
    /// @}

private:
    void dropUtf8() noexcept {
        if (m_utf8.load(std::memory_order_relaxed) != nullptr) {
            freeUtf8();
        }
    }
    void freeUtf8() noexcept;

    bool isInside(char16_t const* text) const {
        return reinterpret_cast<std::uintptr_t>(text) - reinterpret_cast<std::uintptr_t>(this) <
               sizeof(*this);
    }

    // Every string that is not empty is terminated when it is made or changed,
    // so that threads that share it need not write. Storage outside the object
    // is terminated for all copies that share it; storage inside it is copied
    // without its terminator.
    bool settleInside() noexcept {
        char16_t const* const text = m_text.getBuffer();
        if (!isInside(text) || m_text.length() >= UnitsInside) {
            return false;
        }
        const_cast<char16_t*>(text)[m_text.length()] = 0;
        return true;
    }
    void settle() {
        if (!settleInside()) {
            terminate();
        }
    }
    void settleCopy(I18NString const& other) {
        if (m_text.getBuffer() != other.m_text.getBuffer()) {
            settle();
        }
    }
    void settleMoved(I18NString& other) noexcept {
        settleInside();
        other.m_text.remove();
        other.dropUtf8();
    }
    void terminate();
    void makeRoom();
    void changed() {
        dropUtf8();
        if (!settleInside()) {
            makeRoom();
            terminate();
        }
    }

    static constexpr int UnitsInside = 27; // of ICU's string; a terminator needs one of them
    icu::UnicodeString m_text;
    mutable std::atomic<char*> m_utf8{nullptr}; // made by the first c_str()
};

/// The text of `a`, then that of `b`.
VEX_PLATFORM_API I18NString operator+(I18NString const& a, I18NString const& b);

// With the seed of the process: the texts of a model cannot be chosen to hash alike.
template <> struct std::hash<I18NString> {
    std::size_t operator()(I18NString const& text) const noexcept {
        return I18NTextHasher{}(text.view());
    }
};
