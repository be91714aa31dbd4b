#include "provider/tree/VexElementReference.h"

#include "Vex_Handle_Collection.h"
#include "model/VexClassNames.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexNameSearch.h"
#include "model/VexParentNamespace.h"
#include "model/VexShortcutTarget.h"
#include "provider/VexConstants.h"
#include "provider/tree/VexObjectReference.h"
#include "resources.h"

#include <list>

namespace {

// Gone through anew for each shortcut of a path: a host is asked again each time, and no
// answer of its is kept from one to the next.
Vex_Handle_Collection shortcutsOf(VexModelScope const& model) {
    Vex_Handle_Collection shortcuts;
    VexMDMaProviderUtility::getElementsByTagName(model.rootNamespace, VexClass::Shortcut,
                                                 shortcuts);
    return shortcuts;
}

} // namespace

void GetReferenceForElement(VexModelScope const& model, VexPathRecord const* path,
                            I18NString& reference) {
    std::list<I18NString> parts; // outermost first
    I18NString namespaceName;
    for (VexPathRecord const* record = path; record != nullptr; record = record->outer) {
        if (IsNamespaceOrShortcutToNamespace(model, *record->className, *record->name,
                                             namespaceName)) {
            parts.push_front(namespaceName);
            break; // records beyond the nearest namespace are never looked at
        }
        if (RecordRoleOf(*record->className) == VexRecordRole::Named ||
            IsShortcutToQSFilterCalculation(model, *record->className, *record->name)) {
            parts.push_front(*record->name);
        }
    }
    BuildObjectReference(parts, reference);
}

bool IsNamespaceOrShortcutToNamespace(VexModelScope const& model, I18NString const& className,
                                      I18NString const& name, I18NString& namespaceName) {
    if (className == VexClass::Namespace) {
        namespaceName = name;
        return true;
    }
    if (className != VexClass::Shortcut) {
        return false;
    }
    // quirk: shortcut-ends-a-reference
    // A shortcut ends the reference wherever the first like-named one that
    // resolves points at a namespace or lies in one, so almost always. Kept on
    // purpose, as is that an unnamed one repeats the name before it.
    Vex_Handle_Collection const shortcuts = shortcutsOf(model);
    VexNameSearch search(shortcuts, name, model.locale, VexNameSearch::Unnamed::LikeTheOneBefore);
    while (search.next()) {
        VEX_HANDLE target = search.object();
        I18NString targetClass;
        FindShortcutReference(model.session, name, target, targetClass);
        if (targetClass == VexClass::Namespace) {
            namespaceName = name;
            return true;
        }
        VEX_HANDLE const enclosing = FindParentNamespace(search.object());
        if (enclosing.IsNotNull()) {
            // An unnamed namespace leaves the shortcut's name in the string.
            I18NString key = resources::getString(resources::Name);
            I18NString value(name);
            VexMDMaProviderUtility::GetStringPropertyValue(enclosing, key, value, model.locale);
            namespaceName = value;
            return true;
        }
    }
    return false;
}

bool IsShortcutToQSFilterCalculation(VexModelScope const& model, I18NString const& className,
                                     I18NString const& name) {
    if (className != VexClass::Shortcut) {
        return false;
    }
    Vex_Handle_Collection const shortcuts = shortcutsOf(model);
    // quirk: unnamed-shortcut-repeats-the-name-before
    VexNameSearch search(shortcuts, name, model.locale, VexNameSearch::Unnamed::LikeTheOneBefore);
    while (search.next()) {
        VEX_HANDLE target = search.object();
        I18NString targetClass;
        FindShortcutReference(model.session, name, target, targetClass);
        // A shortcut to a query item does not count here, unlike a query item.
        if (targetClass == VexClass::QuerySubject || targetClass == VexClass::Filter ||
            targetClass == VexClass::Calculation) {
            return true;
        }
    }
    return false;
}
