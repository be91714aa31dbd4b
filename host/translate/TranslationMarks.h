#pragma once

#include "host/translate/TranslationFile.h"

#include <optional>
#include <string_view>

namespace vex {

/// What a mark is called in files; "" for none.
char const* translationMarkName(TranslationMark mark);
/// Nothing for a name that no mark has.
std::optional<TranslationMark> findTranslationMark(std::string_view name);

} // namespace vex
