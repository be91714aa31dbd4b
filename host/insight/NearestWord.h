#pragma once

#include "I18NString.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vex {

/// How many slips of the hand make a word of a known one: a character too many,
/// one too few, a wrong one, two exchanged; upper and lower case are the same.
/// Nothing when they are too far apart for one to be meant by the other: a short word
/// bears one slip, a wrong letter makes another word of it, and one of three letters
/// bears none.
std::optional<std::size_t> slipsBetween(std::u16string_view word, std::u16string_view known);

/// The first of the known words that are nearest to a word; null when none is
/// near, or the word is one of them.
I18NString const* nearestWord(I18NString const& word, std::span<I18NString const> known);

/// The same of words that are written in ASCII.
std::string nearestWord(std::string const& word, std::span<std::string_view const> known);

/// "; did you mean X?", "" without a word.
std::string didYouMean(std::string const& word);

} // namespace vex
