#pragma once

#include "host/store/image/Model.h"

#include <string>
#include <vector>

namespace vex {

/// What a suggestion writes for an element: names, and whose names they are.
struct SuggestedText {
    I18NString text;                 // "" when it would be too long to be read
    std::vector<VEX_HANDLE> named{}; // outermost first, the element itself last
};

/// The names of these elements, as a path or reference.
SuggestedText joinNames(std::vector<VEX_HANDLE> named, I18NLocale const& locale);

/// The reference that finds the element; "" when there is none, or it is another's.
SuggestedText referenceTo(Model const& model, VEX_HANDLE element);

/// The namespaces around the element that paths to it may begin with, nearest first.
std::vector<VEX_HANDLE> pathStartsOf(VEX_HANDLE element);

/// The path from one of them to the element.
SuggestedText pathTo(VEX_HANDLE element, VEX_HANDLE start, I18NLocale const& locale);

} // namespace vex
