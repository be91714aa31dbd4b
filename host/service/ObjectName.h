#pragma once

#include "I18NLocale.h"
#include "I18NString.h"
#include "VEX_HANDLE.h"

namespace vex {

/// An element's name that a locale finds; "" when it finds none.
I18NString nameIn(I18NLocale const& locale, VEX_HANDLE element);

} // namespace vex
