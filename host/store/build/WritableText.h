#pragma once

#include <string>
#include <string_view>

namespace vex {

/// The index of the first code unit that no document can hold, `npos` without
/// one: XML 1.0 has no place for most control characters, for halves of
/// surrogate pairs, U+FFFE and U+FFFF.
std::size_t findUnwritable(std::u16string_view text);

/// What is wrong with a text that holds such a unit, and what to do, for messages.
std::string describeUnwritable(char16_t unit);

} // namespace vex
