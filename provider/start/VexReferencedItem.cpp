// The search for the query item that a reference of three names stands for.

#include "VexSession.h"
#include "model/VexClassNames.h"
#include "model/VexFailure.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexNameSearch.h"
#include "model/VexShortcutTarget.h"
#include "provider/VexMDMaProvider.h"
#include "resources.h"

namespace {

// Moves to the next name; past the last one the name is empty.
I18NString nextName(std::list<I18NString> const& names, std::list<I18NString>::const_iterator& at) {
    if (at != names.end()) {
        ++at;
    }
    return at != names.end() ? *at : I18NString();
}

} // namespace

bool VexMDMaProvider::FindReferencedItem(NameParts const& names, I18NLocale const* locale,
                                         Vex_Handle_Collection& candidates, VexMDMaPath& path) {
    auto at = names.begin();
    // quirk: subject-is-sought-in-the-first-candidate
    // A nested namespace of that name is enough to go on, but it is then the
    // first candidate passed in that is searched. Kept on purpose.
    if (!FindItemInCollection(at, locale, candidates, path) &&
        !FindReferencedNamespaces(*at, locale, candidates)) {
        return false;
    }
    I18NString const firstName = *at;
    VEX_HANDLE container = candidates[0];
    I18NString containerClass;
    VexMDMaProviderUtility::GetName(container, containerClass);
    if (containerClass == VexClass::Shortcut) {
        FindShortcutReference(firstName, container, containerClass);
    }

    NameParts const secondName{nextName(names, at)};
    VEX_HANDLE const querySubject =
        findReferencedQuerySubject(container, firstName, secondName, locale, path);
    NameParts const thirdName{nextName(names, at)};
    auto wanted = thirdName.begin();

    Vex_Handle_Collection items;
    loadCollection(querySubject, VexClass::QueryItem, items);
    if (FindItemInCollection(wanted, locale, items, path)) {
        candidates = items;
        return true;
    }
    Vex_Handle_Collection folders;
    loadCollection(querySubject, VexClass::QueryItemFolder, folders);
    if (folders.empty()) {
        RaiseFailure(VexFailure::ItemWithoutFolders, {thirdName.front()});
    }
    for (VEX_HANDLE const folder : folders) { // folders in folders are not entered
        items.clear();
        loadCollection(folder, VexClass::QueryItem, items);
        if (FindItemInCollection(wanted, locale, items, path)) {
            candidates = items;
            return true;
        }
    }
    RaiseFailure(VexFailure::ItemNotInFolders, {thirdName.front()});
}

VEX_HANDLE VexMDMaProvider::findReferencedQuerySubject(VEX_HANDLE container,
                                                       I18NString const& firstName,
                                                       NameParts const& secondName,
                                                       I18NLocale const* locale,
                                                       VexMDMaPath& path) {
    auto wanted = secondName.begin();
    Vex_Handle_Collection members;
    loadCollection(container, VexClass::QuerySubject, members);
    if (FindItemInCollection(wanted, locale, members, path)) {
        if (members.size() != 1) {
            RaiseFailure(VexFailure::QuerySubjectNotOne, {*wanted});
        }
        return members[0];
    }
    members.clear();
    loadCollection(container, VexClass::Shortcut, members);
    if (FindItemInCollection(wanted, locale, members, path)) {
        if (members.size() != 1) {
            RaiseFailure(VexFailure::SubjectShortcutNotOne, {*wanted});
        }
        return FindShortcutTarget(m_session->GetObjectStore(), members[0],
                                  VexTargetRule::LastDecides, VexFailure::SubjectShortcutDangling);
    }
    return findQuerySubjectInModel(firstName, *wanted, locale, path);
}

VEX_HANDLE VexMDMaProvider::findQuerySubjectInModel(I18NString const& namespaceName,
                                                    I18NString const& name,
                                                    I18NLocale const* locale, VexMDMaPath& path) {
    VEX_HANDLE const root = ConvertFromInt(m_currentRequestValue);
    Vex_Handle_Collection subjects;
    VexMDMaProviderUtility::getElementsByTagName(root, VexClass::QuerySubject, subjects);
    if (subjects.empty()) {
        Vex_Handle_Collection shortcuts;
        VexMDMaProviderUtility::getElementsByTagName(root, VexClass::Shortcut, shortcuts);
        VexNameSearch search(shortcuts, name, locale, VexNameSearch::Unnamed::Empty);
        if (search.next()) {
            VEX_HANDLE target = search.object();
            I18NString targetClass;
            FindShortcutReference(name, target, targetClass);
            subjects.push_back(target);
        }
        if (subjects.empty()) {
            RaiseFailure(VexFailure::NoQuerySubjectOrShortcut, {name});
        }
    }

    // quirk: unnamed-subject-repeats-the-name-before
    VexNameSearch search(subjects, name, locale, VexNameSearch::Unnamed::LikeTheOneBefore);
    while (search.next()) {
        VEX_HANDLE enclosing = search.object();
        FindParentNamespace(locale, enclosing);
        if (isNamedInAnyLocale(enclosing, namespaceName, locale)) {
            path.push_front({name, VexClass::QuerySubject});
            return search.object();
        }
    }
    RaiseFailure(VexFailure::QuerySubjectNotInNamespace, {name});
}

bool VexMDMaProvider::isNamedInAnyLocale(VEX_HANDLE object, I18NString const& name,
                                         I18NLocale const* locale) {
    I18NString key = resources::getString(resources::Name);
    I18NString value;
    for (I18NLocale const* const candidate : {locale, m_session->GetLocale(m_defaultLocale)}) {
        VexMDMaProviderUtility::GetStringPropertyValue(object, key, value, candidate);
        if (value == name) {
            return true;
        }
    }
    for (std::size_t index = 0; index < m_supportedLocales.Size(); ++index) {
        I18NString supported; // a string of its own, as in every look at these locales
        VexMDMaProviderUtility::GetStringPropertyValue(
            object, key, supported, m_session->GetLocale(m_supportedLocales[index]));
        if (supported == name) {
            return true;
        }
    }
    return false;
}
