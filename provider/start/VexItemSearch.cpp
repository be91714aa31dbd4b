#include "provider/start/VexItemSearch.h"

#include "VexSession.h"
#include "Vex_Handle_Collection.h"
#include "model/VexClassNames.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexShortcutTarget.h"
#include "provider/VexConstants.h"
#include "resources.h"

#include <optional>

namespace {

// quirk: locale-is-paired-with-the-item-at-its-index
// Locale j is tried on item j, not on the item at hand. That pairing is required;
// and as it does not depend on the item, one answer serves all.
bool anyPairedNameMatches(VexStartContext const& context, I18NString const& wanted,
                          Vex_Handle_Collection const& items, I18NString& key) {
    bool matches = false;
    for (std::size_t j = 0; j < context.supportedLocales.Size(); ++j) {
        I18NString name;
        VexMDMaProviderUtility::GetStringPropertyValue(
            items[j], key, name, context.model.session.GetLocale(context.supportedLocales[j]));
        matches = matches || name == wanted;
    }
    return matches;
}

// Into the same string that the object's name was read into.
void appendAncestors(VEX_HANDLE object, I18NString& key, I18NString& value,
                     I18NLocale const* locale, VexMDMaPath& path) {
    VEX_HANDLE ancestor = VexMDMaProviderUtility::GetParent(object);
    VEX_HANDLE above = VexMDMaProviderUtility::GetParent(ancestor);
    while (ancestor.IsNotNull() && above.IsNotNull()) {
        // quirk: unnamed-ancestor-repeats-the-name-before
        VexMDMaProviderUtility::GetStringPropertyValue(ancestor, key, value, locale);
        I18NString ancestorClass;
        VexMDMaProviderUtility::GetName(ancestor, ancestorClass);
        path.push_back({value, ancestorClass});
        ancestor = above;
        above = VexMDMaProviderUtility::GetParent(ancestor);
    }
}

} // namespace

bool FindItemInCollection(VexStartContext const& context, I18NString const& wanted,
                          Vex_Handle_Collection& items, VexMDMaPath& path) {
    VexModelScope const& model = context.model;
    I18NString key = resources::getString(resources::Name);
    std::optional<bool> pairedNameMatches;
    I18NString value; // one for all items: an unnamed item leaves what was there
    for (VEX_HANDLE const item : items) {
        VexMDMaProviderUtility::GetStringPropertyValue(item, key, value, model.locale);
        I18NString className;
        VexMDMaProviderUtility::GetName(item, className);
        I18NString const matchedName = value;
        if (value != wanted) {
            VexMDMaProviderUtility::GetStringPropertyValue(
                item, key, value, model.session.GetLocale(context.defaultLocale));
        }
        if (value.empty() || value != wanted) {
            if (!pairedNameMatches) {
                pairedNameMatches = anyPairedNameMatches(context, wanted, items, key);
            }
            if (!*pairedNameMatches) {
                continue;
            }
        }

        path.push_front({matchedName, className});
        if (className == VexClass::Shortcut) {
            VEX_HANDLE target = item;
            FindShortcutReference(model.session, matchedName, target, className);
        }
        if (className != VexClass::Namespace && className != VexClass::QueryItemFolder) {
            appendAncestors(item, key, value, model.locale, path);
        }
        ReplaceBy(items, item);
        return true;
    }
    return false;
}

void ReplaceBy(Vex_Handle_Collection& found, VEX_HANDLE object) {
    found.clear();
    found.push_back(object);
}
