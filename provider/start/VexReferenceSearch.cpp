#include "provider/start/VexReferenceSearch.h"

#include "model/VexClassNames.h"
#include "model/VexCollections.h"
#include "model/VexFailure.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexNameSearch.h"
#include "provider/VexConstants.h"
#include "provider/start/VexItemSearch.h"
#include "provider/start/VexReferencedItem.h"

#include <deque>
#include <iterator>

namespace {

VexFoundStart startAt(I18NString const& className, VexMDMaPath& path,
                      Vex_Handle_Collection const& found) {
    VexFoundStart start{className, {}, found, true, false};
    start.path.swap(path);
    return start;
}

std::optional<VexFoundStart> findMember(VexStartContext const& context, VexNameParts const& names,
                                        Vex_Handle_Collection& candidates) {
    VexMDMaPath path;
    if (!FindReferencedFilterOrCalculation(context, names, candidates, path)) {
        return std::nullopt;
    }
    if (candidates.empty()) {
        RaiseFailure(VexFailure::ReferencedMemberLost, {names.back()});
    }
    I18NString className;
    VexMDMaProviderUtility::GetName(candidates[0], className);
    return startAt(className, path, candidates);
}

VexFoundStart findItem(VexStartContext const& context, VexNameParts const& names,
                       Vex_Handle_Collection& candidates) {
    VexMDMaPath path;
    Vex_Handle_Collection shortcut;
    Vex_Handle_Collection* from = &candidates;
    while (!FindReferencedItem(context, names, *from, path)) {
        // Once more from the shortcut that has the first name.
        VEX_HANDLE const next = FindReferencedShortcut(context, names, *from);
        if (!next.IsNotNull()) {
            RaiseFailure(VexFailure::ReferencedItemNotFound, {names.back()});
        }
        ReplaceBy(shortcut, next);
        from = &shortcut;
    }
    if (from->empty()) {
        RaiseFailure(VexFailure::ReferencedItemLost, {names.back()});
    }
    return startAt(VexClass::QueryItem, path, *from); // whatever the class of what was found
}

} // namespace

std::optional<VexFoundStart> FindReferencedStart(VexStartContext const& context,
                                                 VexNameParts const& names,
                                                 I18NString const& reference,
                                                 Vex_Handle_Collection& candidates) {
    constexpr std::size_t namesOfMember = 2;
    constexpr std::size_t namesOfItem = 3;
    if (names.size() == namesOfMember) {
        return findMember(context, names, candidates);
    }
    if (names.size() != namesOfItem) {
        RaiseFailure(VexFailure::ReferenceNameCount, {reference});
    }
    return findItem(context, names, candidates);
}

bool FindReferencedFilterOrCalculation(VexStartContext const& context, VexNameParts const& names,
                                       Vex_Handle_Collection& candidates, VexMDMaPath& path) {
    auto name = names.begin();
    // quirk: member-is-sought-in-the-first-candidate
    // A nested namespace of that name is enough to go on, but the candidates stay
    // the ones passed in. Kept on purpose.
    if (!FindItemInCollection(context, *name, candidates, path) &&
        !FindReferencedNamespaces(*name, context.model.locale, candidates)) {
        return false;
    }
    VEX_HANDLE const container = candidates[0];
    ++name;

    struct Row {
        char const* collection;
        VexFailure notOne;
    };
    constexpr Row rows[] = {
        {VexClass::Filter, VexFailure::FilterNotOne},
        {VexClass::Calculation, VexFailure::CalculationNotOne},
        {VexClass::Shortcut, VexFailure::ShortcutNotOne},
    };
    for (Row const& row : rows) {
        Vex_Handle_Collection members;
        LoadCollection(container, row.collection, members);
        if (FindItemInCollection(context, *name, members, path)) {
            if (members.size() != 1) {
                RaiseFailure(row.notOne, {*name});
            }
            candidates = members;
            return true;
        }
    }
    return false;
}

bool FindReferencedNamespaces(I18NString const& name, I18NLocale const* locale,
                              Vex_Handle_Collection const& candidates) {
    std::deque<VEX_HANDLE> stack; // no recursion: namespaces may nest deeply
    for (VEX_HANDLE const candidate : candidates) {
        stack.push_back(candidate);
        while (!stack.empty()) {
            VEX_HANDLE const above = stack.back();
            stack.pop_back();
            Vex_Handle_Collection members;
            LoadCollection(above, VexClass::Namespace, members);
            if (VexNameSearch(members, name, locale, VexNameSearch::Unnamed::Empty).next()) {
                // quirk: nested-namespace-leaves-the-candidates
                return true; // the candidates stay as they were, on purpose
            }
            for (VEX_HANDLE const member : members) {
                stack.push_back(member);
            }
        }
    }
    return false;
}

VEX_HANDLE FindReferencedShortcut(VexStartContext const& context, VexNameParts const& names,
                                  Vex_Handle_Collection const& candidates) {
    Vex_Handle_Collection shortcuts;
    VexMDMaProviderUtility::getElementsByTagName(context.model.rootNamespace, VexClass::Shortcut,
                                                 shortcuts);
    if (shortcuts.empty()) {
        RaiseFailure(VexFailure::ModelWithoutShortcut, {names.front()});
    }
    VexNameSearch search(shortcuts, names.front(), context.model.locale,
                         VexNameSearch::Unnamed::Empty);
    if (!search.next()) {
        return ConvertFromInt(0);
    }
    if (candidates[0] == search.object()) {
        // The search came back: the shortcut has no name by which it could be
        // found among the candidates, and never will.
        RaiseFailure(VexFailure::ReferencedItemNotFound, {names.back()});
    }
    return search.object();
}
