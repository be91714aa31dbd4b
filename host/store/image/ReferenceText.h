#pragma once

#include "I18NString.h"

#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// Splits "[a].[b]" into its names; inside a name "]]" stands for one "]".
/// White space around brackets and dots is skipped. False when the text is not
/// of that form; `names` then holds what was read before.
bool splitReference(I18NString const& reference, std::vector<std::u16string>& names);

/// Appends "[name]", behind a "." when the reference is not empty. What was
/// joined with it, `splitReference` splits again.
void appendToReference(I18NString& reference, std::u16string_view name);

} // namespace vex
