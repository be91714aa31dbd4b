#pragma once

#include "I18NString.h"

#include <cstdint>

/// A locale, in ICU's canonical spelling: de-AT, de_AT and de_at are one locale
/// named "de_AT".
///
/// A small value: copying costs a pointer. The data behind it is made once for
/// each name, shared by all copies and kept for the life of the process; names come from
/// outside, so there is room for a fixed number of them, by their lengths.
/// Threads: any.
class VEX_PLATFORM_API I18NLocale {
public:
    /// The locale without a name, which has no parent and matches no other.
    I18NLocale();
    /// The locale of that name, in any of its spellings. A name that was used before is
    /// always found, and so is that of a locale that ICU has data of; for another new one
    /// `KRLLimitException` is raised when those before fill the room, which some 15,000 of
    /// usual lengths do.
    explicit I18NLocale(I18NString const& name);

    /// The canonical name, such as "de_AT".
    I18NString const& getName() const;

    /// The next more general locale (de_AT, then de, then the nameless one).
    I18NLocale getParent() const;

    /// A number that two locales share exactly when they are the same; the
    /// nameless locale has 0. Stable for the life of the process only.
    std::uint32_t getNumber() const;

    /// The decimal separator of the locale's numbers; "." for an unknown one.
    I18NString const& getDecimalSeparator() const;

    /// True when ICU knows the language of the name, and its region if it has
    /// one.
    static bool isKnown(I18NString const& name);

    /// @{
    /// Equal when their canonical names are.
    friend bool operator==(I18NLocale a, I18NLocale b) { return a.m_data == b.m_data; }
    friend bool operator!=(I18NLocale a, I18NLocale b) { return !(a == b); }
    /// @}

    struct Data;

private:
    explicit I18NLocale(Data const* data) : m_data(data) {}
    Data const* m_data; // never null; owned by the process-wide table
};
