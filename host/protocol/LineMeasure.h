#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vex {

/// What a line of JSON has too much of, for people, found before anything is built of it:
/// more than `mostValues` values, more keys in an object than any of ours has, or an "id"
/// that is nested deeply; "" when there is nothing, or the text is no JSON before that.
/// Charges the call's `Budget`.
std::string tooMuchIn(std::string_view line, std::size_t mostValues);

} // namespace vex
