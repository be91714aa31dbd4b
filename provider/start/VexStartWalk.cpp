#include "provider/start/VexStartWalk.h"

#include "VexSession.h"
#include "model/VexClassNames.h"
#include "model/VexCollections.h"
#include "model/VexFailure.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexNameSearch.h"
#include "model/VexShortcutTarget.h"
#include "provider/VexConstants.h"
#include "provider/request/VexBracketedName.h"
#include "provider/request/VexMDMaProviderHelper.h"
#include "provider/request/VexRequestedNames.h"
#include "provider/start/VexItemSearch.h"
#include "provider/start/VexReferenceSearch.h"
#include "resources.h"

#include <iterator>

namespace {

void requireOne(Vex_Handle_Collection const& found, VexFailure failure, I18NString const& name) {
    if (found.size() != 1) {
        RaiseFailure(failure, {name});
    }
}

// Chosen once, for the start namespace, and searched at every level of the path
// whatever the classes met further down request.
VexNameParts searchedCollections(VexMDMaProviderHelper const& helper, VEX_HANDLE start,
                                 I18NString const& className) {
    VexNameParts collections;
    helper.GetCollectionsForClass(className, collections);
    if (IsWildcardForCollections(collections)) {
        Vex_Handle_Collection properties;
        VexMDMaProviderUtility::Properties(start, properties, nullptr, nullptr, false);
        collections.clear();
        ListCollections(properties, collections);
    }
    return collections;
}

VexFoundStart walk(VexStartContext const& context, VexMDMaProviderHelper const& helper,
                   VexNameParts const& parts, Vex_Handle_Collection const& startNamespace) {
    VexFoundStart start{{}, {}, startNamespace, false, false};
    VexMDMaProviderUtility::GetName(start.objects[0], start.className);
    start.path.push_back({parts.front(), start.className});
    VexNameParts const collections = searchedCollections(helper, start.objects[0], start.className);
    if (parts.size() == 1) {
        return start;
    }
    requireOne(start.objects, VexFailure::FirstStepNotOne, parts.front());
    auto const last = std::prev(parts.end());
    for (auto part = std::next(parts.begin()); part != parts.end(); ++part) {
        Vex_Handle_Collection items;
        auto collection = collections.begin();
        for (; collection != collections.end(); ++collection) {
            items.clear();
            LoadCollection(start.objects[0], *collection, items);
            if (FindItemInCollection(context, *part, items, start.path)) {
                break;
            }
            if (std::next(collection) == collections.end() && part == last) {
                RaiseFailure(VexFailure::LastNameNotFound, {*part});
            }
        }
        if (collection == collections.end()) {
            continue; // a name in the middle that matches nothing is passed over
        }
        start.objects.swap(items);
        start.className = *collection;
        if (start.className == VexClass::Shortcut && part != last) {
            start.throughShortcut = true;
            VEX_HANDLE target = start.objects[0];
            FindShortcutReference(context.model.session, *part, target, start.className);
            ReplaceBy(start.objects, target);
        }
    }
    return start;
}

} // namespace

Vex_Handle_Collection FindNamespaces(VexSession const& session) {
    Vex_Handle_Collection namespaces;
    VexMDMaProviderUtility::getElementsByTagName(session.GetObjectStore().GetRootObject(),
                                                 VexClass::Namespace, namespaces);
    if (namespaces.empty()) {
        RaiseFailure(VexFailure::ModelWithoutNamespace);
    }
    return namespaces;
}

I18NString PathOfRootNamespace(VexModelScope const& model, VexNameParts& parts) {
    // quirk: root-name-bracket-not-doubled
    // The root namespace is asked for by its name, whose "]" is not doubled: a name
    // that holds one may not split. Kept on purpose.
    I18NString key = resources::getString(resources::Name);
    I18NString name;
    VexMDMaProviderUtility::GetStringPropertyValue(model.rootNamespace, key, name, model.locale);
    I18NString path;
    AppendBracketedName(path, name.view(), false);
    if (!GetNamePartsFromStartPath(path, parts)) {
        RaiseFailure(VexFailure::RootNameMalformed);
    }
    return path;
}

std::optional<VexFoundStart> FindStart(VexStartContext const& context,
                                       VexMDMaProviderHelper const& helper,
                                       Vex_Handle_Collection const& namespaces,
                                       VexAskedStart const& asked) {
    I18NString const& first = asked.parts.front();
    Vex_Handle_Collection found;
    VexNameSearch search(namespaces, first, context.model.locale, VexNameSearch::Unnamed::Empty);
    if (search.next()) {
        found.push_back(search.object());
    }
    requireOne(found, VexFailure::FirstNameNotFound, first);
    if (asked.isReference) {
        return FindReferencedStart(context, asked.parts, asked.text, found);
    }
    return walk(context, helper, asked.parts, found);
}
