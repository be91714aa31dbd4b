#pragma once

#include "VexMDMaProviderUtility.h"
#include "resources.h"

/// The host's words for what security views are made of.
namespace VexSecurity {

enum Word : long {
    MemberRole = 128,
    KindHidden = 182,
    KindExcluded = 209,
    KindIncluded = 227,
    SetKind = 228,
    RoleBased = 236,
    SetEntry = 330,
    ViewMember = 350,
    SecurityView = 360,
};

inline constexpr char SetTag[] = "set";

/// A property of a view, member or set, which are not localised.
inline I18NString PropertyOf(VEX_HANDLE object, Word name) {
    I18NString value;
    I18NString key = resources::getString(name);
    VexMDMaProviderUtility::GetStringPropertyValue(object, key, value, nullptr);
    return value;
}

} // namespace VexSecurity
