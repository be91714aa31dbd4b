#pragma once

#include <string>
#include <string_view>

namespace vex {

/// The text (UTF-8) without white space at its ends, as a document holds it.
std::string trimmed(std::string_view text);

/// The same letters for what differs in case only.
std::u16string foldedCase(std::string_view text);
std::u16string foldedCase(std::u16string_view text);

/// As people read it in a message: in quotes, and shortened when it is long.
std::string quotedText(std::string_view text);

} // namespace vex
