// Requests that start at a reference, and the searches for what stands
// directly in a namespace or behind a shortcut.

#include "model/VexClassNames.h"
#include "model/VexFailure.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexNameSearch.h"
#include "provider/VexConstants.h"
#include "provider/VexMDMaProvider.h"
#include "resources.h"

#include <deque>
#include <iterator>

void VexMDMaProvider::ProcessStartAtRefRequest(VexMDMaProviderHelper const& helper,
                                               NameParts const& parts, I18NString const& startPath,
                                               int const& depth, I18NLocale const* locale,
                                               KRLIDOM_Node parent, VexMDAccessEngine& engine,
                                               VexMDMaProviderVisability& visibility,
                                               Vex_Handle_Collection& found) {
    constexpr std::size_t namesOfMember = 2;
    constexpr std::size_t namesOfItem = 3;

    VexMDMaPath path;
    I18NString className;
    if (parts.size() == namesOfMember) {
        if (!FindReferencedFilterOrCalculation(parts, locale, found, path)) {
            return; // nothing is written and nothing raised
        }
        if (found.empty()) {
            RaiseFailure(VexFailure::ReferencedMemberLost, {parts.back()});
        }
        VexMDMaProviderUtility::GetName(found[0], className);
    } else if (parts.size() != namesOfItem) {
        RaiseFailure(VexFailure::ReferenceNameCount, {startPath});
    } else {
        if (!FindReferencedItem(parts, locale, found, path)) {
            if (FindReferencedShortcutQI(helper, parts, startPath, depth, locale, parent, engine,
                                         visibility, found)) {
                return; // it has written the tree itself
            }
            RaiseFailure(VexFailure::ReferencedItemNotFound, {parts.back()});
        }
        if (found.empty()) {
            RaiseFailure(VexFailure::ReferencedItemLost, {parts.back()});
        }
        className = VexClass::QueryItem; // whatever the class of what was found
    }
    GetRequestedElementTreeAtLevel(helper, className, startPath, path, depth, locale, parent, found,
                                   engine, visibility, 1, true, false, true);
}

bool VexMDMaProvider::FindReferencedFilterOrCalculation(NameParts const& names,
                                                        I18NLocale const* locale,
                                                        Vex_Handle_Collection& candidates,
                                                        VexMDMaPath& path) {
    auto name = names.begin();
    // quirk: member-is-sought-in-the-first-candidate
    // A nested namespace of that name is enough to go on, but the candidates
    // stay the ones passed in. Kept on purpose.
    if (!FindItemInCollection(name, locale, candidates, path) &&
        !FindReferencedNamespaces(*name, locale, candidates)) {
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
        loadCollection(container, row.collection, members);
        if (FindItemInCollection(name, locale, members, path)) {
            if (members.size() != 1) {
                RaiseFailure(row.notOne, {*name});
            }
            candidates = members;
            return true;
        }
    }
    return false;
}

bool VexMDMaProvider::FindReferencedNamespaces(I18NString const& name, I18NLocale const* locale,
                                               Vex_Handle_Collection& candidates) {
    std::deque<VEX_HANDLE> stack; // no recursion: namespaces may nest deeply
    for (VEX_HANDLE const candidate : candidates) {
        stack.push_back(candidate);
        while (!stack.empty()) {
            VEX_HANDLE const above = stack.back();
            stack.pop_back();
            Vex_Handle_Collection members;
            loadCollection(above, k_nSpace, members);
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

bool VexMDMaProvider::FindReferencedShortcutQI(VexMDMaProviderHelper const& helper,
                                               NameParts const& names, I18NString const& reference,
                                               int const& depth, I18NLocale const* locale,
                                               KRLIDOM_Node node, VexMDAccessEngine& engine,
                                               VexMDMaProviderVisability& visibility,
                                               Vex_Handle_Collection& candidates) {
    Vex_Handle_Collection shortcuts;
    VexMDMaProviderUtility::getElementsByTagName(ConvertFromInt(m_currentRequestValue),
                                                 VexClass::Shortcut, shortcuts);
    if (shortcuts.empty()) {
        RaiseFailure(VexFailure::ModelWithoutShortcut, {names.front()});
    }
    VexNameSearch search(shortcuts, names.front(), locale, VexNameSearch::Unnamed::Empty);
    if (!search.next()) {
        return false;
    }
    if (candidates[0] == search.object()) {
        // The second pass came back: the shortcut has no name by which it
        // could be found among the candidates, and never will.
        RaiseFailure(VexFailure::ReferencedItemNotFound, {names.back()});
    }
    Vex_Handle_Collection fresh;
    fresh.push_back(search.object());
    ProcessStartAtRefRequest(helper, names, reference, depth, locale, node, engine, visibility,
                             fresh);
    return true;
}
