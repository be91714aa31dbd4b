#pragma once

#include "I18NString.h"

#include <vector>

namespace vex {

/// Raises `HostException`: unknown user "x"; the catalogue has "ann", "carl".
[[noreturn]] void refuseUnknownName(char const* what, I18NString const& asked,
                                    std::vector<I18NString> const& known);

} // namespace vex
