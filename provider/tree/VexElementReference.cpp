// Which elements of a path count for a reference, and the reference itself.

#include "model/VexClassNames.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexNameSearch.h"
#include "provider/VexMDMaProvider.h"
#include "provider/tree/VexPathRecords.h"
#include "provider/tree/VexReferenceText.h"
#include "resources.h"

#include <algorithm>

void VexMDMaProvider::GetReferenceForElement(I18NLocale const* locale, VexMDMaPath& path,
                                             I18NString& reference) {
    GetReferenceForElement(locale, VexPathRecords(path).front(), reference);
}

void VexMDMaProvider::GetReferenceForElement(I18NLocale const* locale, VexPathRecord const* path,
                                             I18NString& reference) {
    VexReferenceText text;
    I18NString namespaceName;
    for (VexPathRecord const* record = path; record != nullptr; record = record->outer) {
        if (IsNamespaceOrShortcutToNamespace(locale, *record->className, *record->name,
                                             namespaceName)) {
            text.putInFront(namespaceName);
            break; // records beyond the nearest namespace are never looked at
        }
        if (IsQuerySubjectOrQueryItemOrFilterOrCalculation(*record->className, *record->name) ||
            IsShortcutToQSFilterCalculation(locale, *record->className, *record->name)) {
            text.putInFront(*record->name);
        }
    }
    text.appendTo(reference);
}

void VexMDMaProvider::BuildObjectReference(NameParts const& parts, I18NString& reference) {
    for (I18NString const& part : parts) {
        AppendReferencePart(reference, part);
    }
}

bool VexMDMaProvider::IsNamespaceOrShortcutToNamespace(I18NLocale const* locale,
                                                       I18NString const& className,
                                                       I18NString const& name,
                                                       I18NString& namespaceName) {
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
    Vex_Handle_Collection shortcuts;
    VexMDMaProviderUtility::getElementsByTagName(ConvertFromInt(m_currentRequestValue),
                                                 VexClass::Shortcut, shortcuts);
    VexNameSearch search(shortcuts, name, locale, VexNameSearch::Unnamed::LikeTheOneBefore);
    while (search.next()) {
        VEX_HANDLE target = search.object();
        I18NString targetClass;
        FindShortcutReference(name, target, targetClass);
        if (targetClass == VexClass::Namespace) {
            namespaceName = name;
            return true;
        }
        VEX_HANDLE enclosing = search.object();
        FindParentNamespace(locale, enclosing);
        if (enclosing.IsNotNull()) {
            // An unnamed namespace leaves the shortcut's name in the string.
            I18NString key = resources::getString(resources::Name);
            I18NString value(name);
            VexMDMaProviderUtility::GetStringPropertyValue(enclosing, key, value, locale);
            namespaceName = value;
            return true;
        }
    }
    return false;
}

void VexMDMaProvider::FindParentNamespace([[maybe_unused]] I18NLocale const* locale,
                                          VEX_HANDLE& element) {
    VEX_HANDLE above = VexMDMaProviderUtility::GetParent(element);
    I18NString className;
    VexMDMaProviderUtility::GetName(above, className);
    while (above.IsNotNull() && className != VexClass::Namespace) {
        above = VexMDMaProviderUtility::GetParent(above);
        VexMDMaProviderUtility::GetName(above, className);
    }
    element = above;
}

bool VexMDMaProvider::IsQuerySubjectOrQueryItemOrFilterOrCalculation(
    I18NString const& className, [[maybe_unused]] I18NString const& name) {
    constexpr char const* classes[] = {VexClass::QuerySubject, VexClass::Filter,
                                       VexClass::Calculation, VexClass::QueryItem};
    return std::any_of(std::begin(classes), std::end(classes),
                       [&](char const* candidate) { return className == candidate; });
}

bool VexMDMaProvider::IsShortcutToQSFilterCalculation(I18NLocale const* locale,
                                                      I18NString const& className,
                                                      I18NString const& name) {
    if (className != VexClass::Shortcut) {
        return false;
    }
    Vex_Handle_Collection shortcuts;
    VexMDMaProviderUtility::getElementsByTagName(ConvertFromInt(m_currentRequestValue),
                                                 VexClass::Shortcut, shortcuts);
    // quirk: unnamed-shortcut-repeats-the-name-before
    VexNameSearch search(shortcuts, name, locale, VexNameSearch::Unnamed::LikeTheOneBefore);
    while (search.next()) {
        VEX_HANDLE target = search.object();
        I18NString targetClass;
        FindShortcutReference(name, target, targetClass);
        // A shortcut to a query item does not count here, unlike a query item.
        if (targetClass == VexClass::QuerySubject || targetClass == VexClass::Filter ||
            targetClass == VexClass::Calculation) {
            return true;
        }
    }
    return false;
}
