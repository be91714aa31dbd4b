#pragma once

#include "I18NString.h"

#include <string>
#include <vector>

namespace vex {

/// Bracketed names in a text that belong together: [Sales].[Orders].[Total], with the word
/// or quoted name right before them, as in Orders[Total] and 'Orders'[Total].
struct TextReference {
    std::vector<std::u16string> names; // the bracketed ones
    std::u16string before;             // the word; "" without one
    bool isQuoted = false;             // stands in a literal, such as 'as in [Sales]'
    bool isMemberKey = false;          // &[2004], a value and no name

    /// The names in brackets; the word before them is the first one, where there is one.
    std::vector<std::u16string> allNames() const;
};

/// In the order of the text.
std::vector<TextReference> referencesIn(I18NString const& text);

} // namespace vex
