// From a start path to the object that it names.

#include "VexSession.h"
#include "model/VexClassNames.h"
#include "model/VexFailure.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexNameSearch.h"
#include "provider/VexConstants.h"
#include "provider/VexMDMaProvider.h"
#include "provider/request/VexMDMaProviderHelper.h"
#include "provider/request/VexRequestedNames.h"
#include "provider/start/VexStartPath.h"
#include "resources.h"

#include <iterator>
#include <optional>

namespace {

I18NString nameOf(VEX_HANDLE object, I18NLocale const* locale) {
    I18NString key = resources::getString(resources::Name);
    I18NString name;
    VexMDMaProviderUtility::GetStringPropertyValue(object, key, name, locale);
    return name;
}

void requireOne(Vex_Handle_Collection const& found, VexFailure failure, I18NString const& name) {
    if (found.size() != 1) {
        RaiseFailure(failure, {name});
    }
}

void replaceBy(Vex_Handle_Collection& found, VEX_HANDLE object) {
    found.clear();
    found.push_back(object);
}

} // namespace

void VexMDMaProvider::ProcessRequest(VexMDMaProviderHelper const& helper, NameParts const& parts,
                                     I18NString const& startPath, int const& depth,
                                     I18NLocale const* locale, VexMDAccessEngine& engine,
                                     VexMDMaProviderVisability& visibility, bool isReference,
                                     KRLIDOM_Node parent) {
    Vex_Handle_Collection namespaces;
    VexMDMaProviderUtility::getElementsByTagName(m_session->GetObjectStore().GetRootObject(),
                                                 k_nSpace, namespaces);
    if (namespaces.empty()) {
        RaiseFailure(VexFailure::ModelWithoutNamespace);
    }
    m_currentRequestValue = Convert2Int(namespaces[0]);

    if (startPath.empty()) {
        // quirk: root-name-bracket-not-doubled
        // The root namespace is asked for by its name, whose "]" is not doubled:
        // a name that holds one may not split. Kept on purpose.
        I18NString const name = nameOf(ConvertFromInt(m_currentRequestValue), locale);
        I18NString escaped;
        I18NString rootPath;
        AppendBracketedName(rootPath, SearchAndReplace(name, "]", "]", escaped));
        NameParts rootParts;
        if (!GetNamePartsFromStartPath(rootPath, rootParts)) {
            RaiseFailure(VexFailure::RootNameMalformed);
        }
        ProcessRequest(helper, rootParts, rootPath, depth, locale, engine, visibility, isReference,
                       parent);
        return;
    }

    Vex_Handle_Collection found;
    VexNameSearch search(namespaces, parts.front(), locale, VexNameSearch::Unnamed::Empty);
    if (search.next()) {
        found.push_back(search.object());
    }
    requireOne(found, VexFailure::FirstNameNotFound, parts.front());
    if (isReference) {
        ProcessStartAtRefRequest(helper, parts, startPath, depth, locale, parent, engine,
                                 visibility, found);
        return;
    }

    I18NString currentClass;
    VexMDMaProviderUtility::GetName(found[0], currentClass);
    VexMDMaPath path{{parts.front(), currentClass}};
    // Chosen once, for the start namespace's class, and searched at every level
    // of the path whatever the classes met further down request.
    NameParts collections;
    helper.GetCollectionsForClass(currentClass, collections);
    if (IsWildcardForCollections(collections)) {
        Vex_Handle_Collection properties;
        VexMDMaProviderUtility::Properties(found[0], properties, nullptr, nullptr, false);
        collections.clear();
        getAllCollections(properties, collections);
    }

    bool throughShortcut = false;
    auto const last = std::prev(parts.end());
    for (auto part = parts.begin(); parts.size() > 1 && part != parts.end(); ++part) {
        if (part == parts.begin()) {
            requireOne(found, VexFailure::FirstStepNotOne, *part);
            ++part;
        }
        auto collection = collections.begin();
        Vex_Handle_Collection items;
        for (; collection != collections.end(); ++collection) {
            items.clear();
            loadCollection(found[0], *collection, items);
            if (FindItemInCollection(part, locale, items, path)) {
                break;
            }
            if (std::next(collection) == collections.end() && part == last) {
                RaiseFailure(VexFailure::LastNameNotFound, {*part});
            }
        }
        if (collection == collections.end()) {
            continue; // a name in the middle that matches nothing is passed over
        }
        found = items;
        currentClass = *collection;
        if (currentClass == VexClass::Shortcut && part != last) {
            throughShortcut = true;
            VEX_HANDLE target = found[0];
            FindShortcutReference(*part, target, currentClass);
            replaceBy(found, target);
        }
    }
    GetRequestedElementTreeAtLevel(helper, currentClass, startPath, path, depth, locale, parent,
                                   found, engine, visibility, 1, false, throughShortcut, true);
}

bool VexMDMaProvider::FindItemInCollection(NameParts::const_iterator& part,
                                           I18NLocale const* locale, Vex_Handle_Collection& items,
                                           VexMDMaPath& path) {
    I18NString const& wanted = *part;
    I18NString key = resources::getString(resources::Name);
    // quirk: locale-is-paired-with-the-item-at-its-index
    // Locale j is tried on item j, not on the item at hand. That pairing is
    // required; and as it does not depend on the item, one answer serves all.
    std::optional<bool> pairedNameMatches;
    auto const anyPairedNameMatches = [&] {
        bool matches = false;
        for (std::size_t j = 0; j < m_supportedLocales.Size(); ++j) {
            I18NString name;
            VexMDMaProviderUtility::GetStringPropertyValue(
                items[j], key, name, m_session->GetLocale(m_supportedLocales[j]));
            matches = matches || name == wanted;
        }
        return matches;
    };

    I18NString value; // one for all items: an unnamed item leaves what was there
    for (VEX_HANDLE const item : items) {
        VexMDMaProviderUtility::GetStringPropertyValue(item, key, value, locale);
        I18NString className;
        VexMDMaProviderUtility::GetName(item, className);
        I18NString const matchedName = value;
        if (value != wanted) {
            VexMDMaProviderUtility::GetStringPropertyValue(item, key, value,
                                                           m_session->GetLocale(m_defaultLocale));
        }
        if (value.empty() || value != wanted) {
            if (!pairedNameMatches) {
                pairedNameMatches = anyPairedNameMatches();
            }
            if (!*pairedNameMatches) {
                continue;
            }
        }

        path.push_front({matchedName, className});
        if (className == VexClass::Shortcut) {
            VEX_HANDLE target = item;
            FindShortcutReference(matchedName, target, className);
        }
        if (className != VexClass::Namespace && className != VexClass::QueryItemFolder) {
            VEX_HANDLE ancestor = VexMDMaProviderUtility::GetParent(item);
            VEX_HANDLE above = VexMDMaProviderUtility::GetParent(ancestor);
            while (ancestor.IsNotNull() && above.IsNotNull()) {
                // quirk: unnamed-ancestor-repeats-the-name-before
                // Into the same string: an unnamed ancestor repeats the name
                // before it.
                VexMDMaProviderUtility::GetStringPropertyValue(ancestor, key, value, locale);
                I18NString ancestorClass;
                VexMDMaProviderUtility::GetName(ancestor, ancestorClass);
                path.push_back({value, ancestorClass});
                ancestor = above;
                above = VexMDMaProviderUtility::GetParent(ancestor);
            }
        }
        replaceBy(items, item);
        return true;
    }
    return false;
}
