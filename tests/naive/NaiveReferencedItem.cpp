#include "tests/naive/NaiveProvider.h"

namespace naive {

namespace {

Text const itemSource = u"VexMDMaProvider";
Text const function = u"VexMDMaProvider::FindReferencedItem";

} // namespace

bool NaiveProvider::findQueryItem(Texts const& parts, Handles& candidates, Path& path) const {
    if (!findItemInCollection(parts[0], candidates, path) &&
        !namespaceExistsBelow(parts[0], candidates)) {
        return false;
    }
    Handle container = candidates.front();
    if (classOf(container) == u"shortcut") {
        Text targetClass;
        findShortcutReference(parts[0], container, targetClass);
    }
    Handle const querySubject = findQuerySubject(container, parts, path);
    Text const& itemName = parts[2];

    Handles items;
    loadCollection(m_model, querySubject, u"queryItem", items);
    if (findItemInCollection(itemName, items, path)) {
        candidates = items;
        return true;
    }
    Handles folders;
    loadCollection(m_model, querySubject, u"queryItemFolder", folders);
    if (folders.empty()) {
        raise(1171025905, itemSource, 1398, function, {itemName});
    }
    for (Handle folder : folders) {
        Handles inFolder;
        loadCollection(m_model, folder, u"queryItem", inFolder);
        if (findItemInCollection(itemName, inFolder, path)) {
            candidates = inFolder;
            return true;
        }
    }
    raise(1171025905, itemSource, 1414, function, {itemName});
}

Handle NaiveProvider::findQuerySubject(Handle container, Texts const& parts, Path& path) const {
    Handles direct;
    loadCollection(m_model, container, u"querySubject", direct);
    if (findItemInCollection(parts[1], direct, path)) {
        return direct.front();
    }
    Handles shortcuts;
    loadCollection(m_model, container, u"shortcut", shortcuts);
    if (findItemInCollection(parts[1], shortcuts, path)) {
        return shortcutTarget(shortcuts.front());
    }
    Handle const found = findQuerySubjectModelWide(parts);
    path.push_front({parts[1], u"querySubject"});
    return found;
}

// The last readable target wins.
Handle NaiveProvider::shortcutTarget(Handle shortcut) const {
    Handle target = nullptr;
    for (Handle property : m_model.properties(shortcut)) {
        Text reference;
        if (classOf(property) == u"refobj" && m_model.getValue(property, reference)) {
            target = m_model.objectWithReference(reference);
            if (!target) {
                raise(1170588191, itemSource, 1214, function);
            }
        }
    }
    return target;
}

Handle NaiveProvider::findQuerySubjectModelWide(Texts const& parts) const {
    Handles subjects = m_model.elementsByTagName(m_rootNamespace, u"querySubject");
    if (subjects.empty()) {
        for (Handle shortcut : m_model.elementsByTagName(m_rootNamespace, u"shortcut")) {
            if (nameOf(shortcut) == parts[1]) {
                Handle target = shortcut;
                Text targetClass;
                findShortcutReference(parts[1], target, targetClass);
                subjects.push_back(target);
                break;
            }
        }
        if (subjects.empty()) {
            raise(1171025905, itemSource, 1263, function, {parts[1]});
        }
    }
    // One value for the walk: a query subject without a name is compared with the name before it.
    Text value;
    for (Handle subject : subjects) {
        m_model.readProperty(subject, u"name", value, m_host.locale);
        if (value == parts[1] && namespaceHasName(parentNamespace(m_model, subject), parts[0])) {
            return subject;
        }
    }
    raise(1171025905, itemSource, 1357, function, {parts[1]});
}

bool NaiveProvider::namespaceHasName(Handle object, Text const& wanted) const {
    Text value;
    m_model.readProperty(object, u"name", value, m_host.locale);
    if (value == wanted) {
        return true;
    }
    m_model.readProperty(object, u"name", value, m_defaultLocale);
    if (value == wanted) {
        return true;
    }
    for (Text const& locale : m_supportedLocales) {
        Text name;
        m_model.readProperty(object, u"name", name, locale);
        if (name == wanted) {
            return true;
        }
    }
    return false;
}

} // namespace naive
