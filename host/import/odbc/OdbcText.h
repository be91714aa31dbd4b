#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace vex {

/// Text for the wide functions of ODBC, which take UTF-16 here: with a zero at its end.
std::vector<SQLWCHAR> wideText(std::string_view utf8);

/// The UTF-8 of so many units. What is no UTF-16 becomes U+FFFD.
std::string utf8Text(SQLWCHAR const* units, std::size_t count);

} // namespace vex
