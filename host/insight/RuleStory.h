#pragma once

#include "I18NLocale.h"
#include "host/catalogue/PolicyTrace.h"
#include "host/store/image/Model.h"

#include <string>
#include <vector>

namespace vex {

/// What the views of a policy say about an object, and the rule and line that decided: a
/// sentence or more for each view. `onlyViews` narrows to those; none for all.
std::vector<std::string> tellRules(PolicyTrace const& trace, Model const& model,
                                   I18NLocale const& locale, VEX_HANDLE object,
                                   std::vector<I18NString> const* onlyViews = nullptr);

} // namespace vex
