#pragma once

#include <string_view>

namespace vex {

/// The index of the first code unit that no document can hold, `npos` without
/// one: XML 1.0 has no place for most control characters, for halves of
/// surrogate pairs, U+FFFE and U+FFFF.
std::size_t findUnwritable(std::u16string_view text);

} // namespace vex
