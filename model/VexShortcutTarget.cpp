#include "model/VexShortcutTarget.h"

#include "VexSession.h"
#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"

VEX_HANDLE FindShortcutTarget(VexObjectStore const& store, VEX_HANDLE shortcut, VexTargetRule rule,
                              VexFailure unknown, I18NString const* parameter) {
    VEX_HANDLE target = ConvertFromInt(0);
    Vex_Handle_Collection properties;
    VexMDMaProviderUtility::Properties(shortcut, properties, nullptr, nullptr, false);
    for (VEX_HANDLE const property : properties) {
        I18NString name;
        VexMDMaProviderUtility::GetName(property, name);
        if (name != "refobj") {
            continue;
        }
        I18NString reference;
        if (!VexMDMaProviderUtility::GetValue(property, reference, true)) {
            continue;
        }
        target = store.GetObjectByReference(reference, 0);
        if (!target.IsNotNull()) {
            if (parameter != nullptr) {
                RaiseFailure(unknown, {*parameter});
            }
            RaiseFailure(unknown);
        }
        if (rule == VexTargetRule::FirstDecides) {
            break;
        }
    }
    return target;
}

void FindShortcutReference(VexSession const& session, I18NString const& name, VEX_HANDLE& shortcut,
                           I18NString& targetClass) {
    VEX_HANDLE const target =
        FindShortcutTarget(session.GetObjectStore(), shortcut, VexTargetRule::FirstDecides,
                           VexFailure::ShortcutTargetUnknown, &name);
    if (target.IsNotNull()) {
        VexMDMaProviderUtility::GetName(target, targetClass);
    }
    shortcut = target;
}
