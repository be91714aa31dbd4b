#pragma once

#include <cstring>
#include <string_view>

namespace vex {

/// True when the texts are equal. The comparison that comes with the library
/// goes through texts of this kind unit by unit; this one takes blocks, and a
/// text that is known beforehand is compared in an instruction or two.
inline bool isSameText(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() &&
           std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
}

} // namespace vex
