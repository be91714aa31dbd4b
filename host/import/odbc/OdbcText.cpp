#include "host/import/odbc/OdbcText.h"

#include "I18NString.h"

namespace vex {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "the driver manager speaks UTF-16");

std::vector<SQLWCHAR> wideText(std::string_view utf8) {
    I18NString const text = I18NString::fromUtf8(utf8);
    std::vector<SQLWCHAR> units(text.view().begin(), text.view().end());
    units.push_back(0);
    return units;
}

std::string utf8Text(SQLWCHAR const* units, std::size_t count) {
    return I18NString(std::u16string(units, units + count)).toUtf8();
}

} // namespace vex
