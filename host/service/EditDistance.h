#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vex {

/// The text with upper and lower case made the same.
std::u16string foldCase(std::u16string_view text);

/// How many characters must be put in, left out or exchanged to make one text
/// of the other, upper and lower case being the same; `limit` + 1 when it is
/// more than `limit`. Its work is the product of a length and the limit, and is charged
/// to the call's `Budget`.
std::size_t editDistance(std::u16string_view a, std::u16string_view b, std::size_t limit);

} // namespace vex
