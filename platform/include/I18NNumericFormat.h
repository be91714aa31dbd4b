#pragma once

#include "I18NLocale.h"

/// The kinds of numbers that a format is for.
enum I18NNumericFormatTypes : int {
    I18NNumericFormatInteger = 0,
    I18NNumericFormatPercent = 1,
    I18NNumericFormatDecimal = 2,
};

/// How numbers are written in a locale.
class VEX_PLATFORM_API I18NNumericFormat {
public:
    /// The separators of a locale do not depend on `type`. `pattern` and
    /// `currency` choose a layout other than the locale's own; null keeps it.
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
