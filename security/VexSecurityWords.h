#pragma once

#include "model/VexMDMaProviderUtility.h"
#include "resources.h"

/// What security views are made of.
namespace VexSecurity {

/// A property of a view, member or set, which are not localised.
inline I18NString PropertyOf(VEX_HANDLE object, resources::Word name) {
    I18NString value;
    I18NString key = resources::getString(name);
    VexMDMaProviderUtility::GetStringPropertyValue(object, key, value, nullptr);
    return value;
}

} // namespace VexSecurity
