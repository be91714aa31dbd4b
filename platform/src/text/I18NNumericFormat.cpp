#include "I18NNumericFormat.h"

I18NNumericFormat::I18NNumericFormat(I18NLocale const& locale, I18NNumericFormatTypes type,
                                     [[maybe_unused]] I18NString const* pattern,
                                     [[maybe_unused]] I18NString const* currency)
    : m_locale(locale), m_type(type) {}

void I18NNumericFormat::getDecimalSeparator(I18NString& separator) const {
    separator = m_locale.getDecimalSeparator();
}
