#pragma once

#include "host/store/image/Model.h"

#include <string_view>

namespace vex {

/// How many characters must be put in, left out or exchanged to make one text
/// of the other, upper and lower case being the same; `limit` + 1 when it is
/// more than `limit`.
std::size_t editDistance(std::u16string_view a, std::u16string_view b, std::size_t limit);

/// What a mistyped text may have meant, the nearest first, three at most: ids
/// and references of objects, or with a locale the start paths to them in that
/// language. Nothing when the text is right as it is.
std::vector<I18NString> suggestObjects(Model const& model, I18NString const& text);
std::vector<I18NString> suggestPaths(Model const& model, I18NString const& text, I18NLocale locale);

/// "did you mean A, B or C?"; "" when there is nothing to mean.
std::string toQuestion(std::vector<I18NString> const& suggestions);

} // namespace vex
