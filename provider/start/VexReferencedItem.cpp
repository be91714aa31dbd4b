#include "provider/start/VexReferencedItem.h"

#include "VexSession.h"
#include "model/VexClassNames.h"
#include "model/VexCollections.h"
#include "model/VexFailure.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexNameSearch.h"
#include "model/VexParentNamespace.h"
#include "model/VexShortcutTarget.h"
#include "provider/VexConstants.h"
#include "provider/start/VexItemSearch.h"
#include "provider/start/VexReferenceSearch.h"
#include "resources.h"

namespace {

// Moves to the next name; past the last one the name is empty.
I18NString nextName(VexNameParts const& names, VexNameParts::const_iterator& at) {
    if (at != names.end()) {
        ++at;
    }
    return at != names.end() ? *at : I18NString();
}

bool isNamedInAnyLocale(VexStartContext const& context, VEX_HANDLE object, I18NString const& name) {
    VexSession const& session = context.model.session;
    I18NString key = resources::getString(resources::Name);
    I18NString value;
    for (I18NLocale const* const locale :
         {context.model.locale, session.GetLocale(context.defaultLocale)}) {
        VexMDMaProviderUtility::GetStringPropertyValue(object, key, value, locale);
        if (value == name) {
            return true;
        }
    }
    for (std::size_t index = 0; index < context.supportedLocales.Size(); ++index) {
        I18NString supported; // a string of its own, as in every look at these locales
        VexMDMaProviderUtility::GetStringPropertyValue(
            object, key, supported, session.GetLocale(context.supportedLocales[index]));
        if (supported == name) {
            return true;
        }
    }
    return false;
}

// Every query subject of the model; without one, what the first shortcut of the
// name leads to.
Vex_Handle_Collection subjectsOfModel(VexModelScope const& model, I18NString const& name) {
    Vex_Handle_Collection subjects;
    VexMDMaProviderUtility::getElementsByTagName(model.rootNamespace, VexClass::QuerySubject,
                                                 subjects);
    if (!subjects.empty()) {
        return subjects;
    }
    Vex_Handle_Collection shortcuts;
    VexMDMaProviderUtility::getElementsByTagName(model.rootNamespace, VexClass::Shortcut,
                                                 shortcuts);
    VexNameSearch search(shortcuts, name, model.locale, VexNameSearch::Unnamed::Empty);
    if (!search.next()) {
        RaiseFailure(VexFailure::NoQuerySubjectOrShortcut, {name});
    }
    VEX_HANDLE target = search.object();
    I18NString targetClass;
    FindShortcutReference(model.session, name, target, targetClass);
    subjects.push_back(target);
    return subjects;
}

VEX_HANDLE findQuerySubjectInModel(VexStartContext const& context, I18NString const& namespaceName,
                                   I18NString const& name, VexMDMaPath& path) {
    Vex_Handle_Collection const subjects = subjectsOfModel(context.model, name);
    // quirk: unnamed-subject-repeats-the-name-before
    VexNameSearch search(subjects, name, context.model.locale,
                         VexNameSearch::Unnamed::LikeTheOneBefore);
    while (search.next()) {
        if (isNamedInAnyLocale(context, FindParentNamespace(search.object()), namespaceName)) {
            path.push_front({name, VexClass::QuerySubject});
            return search.object();
        }
    }
    RaiseFailure(VexFailure::QuerySubjectNotInNamespace, {name});
}

VEX_HANDLE findQuerySubject(VexStartContext const& context, VEX_HANDLE container,
                            I18NString const& namespaceName, I18NString const& name,
                            VexMDMaPath& path) {
    Vex_Handle_Collection members;
    LoadCollection(container, VexClass::QuerySubject, members);
    if (FindItemInCollection(context, name, members, path)) {
        if (members.size() != 1) {
            RaiseFailure(VexFailure::QuerySubjectNotOne, {name});
        }
        return members[0];
    }
    members.clear();
    LoadCollection(container, VexClass::Shortcut, members);
    if (FindItemInCollection(context, name, members, path)) {
        if (members.size() != 1) {
            RaiseFailure(VexFailure::SubjectShortcutNotOne, {name});
        }
        return FindShortcutTarget(context.model.session.GetObjectStore(), members[0],
                                  VexTargetRule::LastDecides, VexFailure::SubjectShortcutDangling);
    }
    return findQuerySubjectInModel(context, namespaceName, name, path);
}

} // namespace

bool FindReferencedItem(VexStartContext const& context, VexNameParts const& names,
                        Vex_Handle_Collection& candidates, VexMDMaPath& path) {
    auto at = names.begin();
    // quirk: subject-is-sought-in-the-first-candidate
    // A nested namespace of that name is enough to go on, but it is then the first
    // candidate passed in that is searched. Kept on purpose.
    if (!FindItemInCollection(context, *at, candidates, path) &&
        !FindReferencedNamespaces(*at, context.model.locale, candidates)) {
        return false;
    }
    I18NString const firstName = *at;
    VEX_HANDLE container = candidates[0];
    I18NString containerClass;
    VexMDMaProviderUtility::GetName(container, containerClass);
    if (containerClass == VexClass::Shortcut) {
        FindShortcutReference(context.model.session, firstName, container, containerClass);
    }

    I18NString const secondName = nextName(names, at);
    VEX_HANDLE const querySubject =
        findQuerySubject(context, container, firstName, secondName, path);
    I18NString const thirdName = nextName(names, at);

    Vex_Handle_Collection items;
    LoadCollection(querySubject, VexClass::QueryItem, items);
    if (FindItemInCollection(context, thirdName, items, path)) {
        candidates = items;
        return true;
    }
    Vex_Handle_Collection folders;
    LoadCollection(querySubject, VexClass::QueryItemFolder, folders);
    if (folders.empty()) {
        RaiseFailure(VexFailure::ItemWithoutFolders, {thirdName});
    }
    for (VEX_HANDLE const folder : folders) { // folders in folders are not entered
        items.clear();
        LoadCollection(folder, VexClass::QueryItem, items);
        if (FindItemInCollection(context, thirdName, items, path)) {
            candidates = items;
            return true;
        }
    }
    RaiseFailure(VexFailure::ItemNotInFolders, {thirdName});
}
