#pragma once

#include "I18NString.h"

#include <string>
#include <string_view>

namespace vex {

/// A text as people read it, as UTF-8: what is long loses its middle. Messages that repeat what
/// stands in a document would grow without bounds.
std::string shortened(std::u16string_view text);

/// The same in quotes.
std::string quotedShort(I18NString const& text);

} // namespace vex
