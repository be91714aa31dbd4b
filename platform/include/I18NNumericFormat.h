#pragma once

#include "I18NLocale.h"

/// The kinds of numbers that a format is for.
enum I18NNumericFormatTypes : int {
    I18NNumericFormatInteger = 0,
    I18NNumericFormatPercent = 1,
    I18NNumericFormatDecimal = 2,
};

/// How numbers are written in a locale. A value. Threads: any.
class VEX_PLATFORM_API I18NNumericFormat {
public:
    /// The separators of a locale depend neither on `type` nor on `pattern` and
    /// `currency`, which may be null and have no effect.
    I18NNumericFormat(I18NLocale const& locale, I18NNumericFormatTypes type,
                      I18NString const* pattern, I18NString const* currency);

    /// Sets `separator` to the text between the integer and fraction digits.
    void getDecimalSeparator(I18NString& separator) const;

    /// The kind that the format was made for.
    I18NNumericFormatTypes getType() const { return m_type; }

private:
    I18NLocale m_locale;
    I18NNumericFormatTypes m_type;
};
