#include "tests/naive/NaiveProvider.h"

namespace naive {

namespace {

Text const referencesSource = u"VexMDMaProvider";
Text const startFunction = u"VexMDMaProvider::processStartAtRefRequest";
Text const shortcutFunction = u"VexMDMaProvider::FindReferencedShortcutQI";

} // namespace

void NaiveProvider::processReference(RequestScope& scope, Texts const& parts, Text const& reference,
                                     Handles found, bool secondPass) {
    Path path;
    ResponseElement& parent = scope.document.result();
    if (parts.size() == 2) {
        if (findFilterOrCalculation(parts, found, path)) {
            writeObjects(scope, classOf(found.front()), reference, path, parent, found, 1,
                         {true, false, true});
        }
        return;
    }
    if (parts.size() != 3) {
        raise(1171135124, referencesSource, 866, startFunction, {reference});
    }
    if (!findQueryItem(parts, found, path)) {
        // A shortcut without a name comes back here with itself: once is enough.
        if (secondPass || !findThroughShortcut(scope, parts, reference)) {
            raise(1171025905, referencesSource, 898, startFunction, {parts.back()});
        }
        return;
    }
    writeObjects(scope, u"queryItem", reference, path, parent, found, 1, {true, false, true});
}

bool NaiveProvider::findFilterOrCalculation(Texts const& parts, Handles& candidates,
                                            Path& path) const {
    if (!findItemInCollection(parts[0], candidates, path) &&
        !namespaceExistsBelow(parts[0], candidates)) {
        return false;
    }
    Handle const container = candidates.front();
    for (Text const& collection : {Text(u"filter"), Text(u"calculation"), Text(u"shortcut")}) {
        Handles items;
        loadCollection(m_model, container, collection, items);
        if (findItemInCollection(parts[1], items, path)) {
            candidates = items;
            return true;
        }
    }
    return false;
}

// Says only that there is such a namespace: the candidates stay as they are.
bool NaiveProvider::namespaceExistsBelow(Text const& name, Handles const& candidates) const {
    for (Handle candidate : candidates) {
        Handles stack = {candidate};
        while (!stack.empty()) {
            Handle const object = stack.back();
            stack.pop_back();
            Handles members;
            loadCollection(m_model, object, u"namespace", members);
            for (Handle member : members) {
                if (nameOf(member) == name) {
                    return true;
                }
                stack.push_back(member);
            }
        }
    }
    return false;
}

bool NaiveProvider::findThroughShortcut(RequestScope& scope, Texts const& parts,
                                        Text const& reference) {
    Handles const shortcuts = m_model.elementsByTagName(m_rootNamespace, u"shortcut");
    if (shortcuts.empty()) {
        raise(1170653716, referencesSource, 1080, shortcutFunction, {parts[0]});
    }
    for (Handle shortcut : shortcuts) {
        if (nameOf(shortcut) == parts[0]) {
            processReference(scope, parts, reference, {shortcut}, true);
            return true;
        }
    }
    return false;
}

} // namespace naive
