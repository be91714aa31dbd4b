#include "tests/naive/NaiveProvider.h"

namespace naive {

namespace {

Text const pathSource = u"VexMDMaProvider";
// The two recorded names differ on purpose.
Text const namespaceFunction = u"VexMDMAProvider::ProcessRequest";
Text const nameFunction = u"VexMDMaProviderR::ProcessRequest";

} // namespace

void NaiveProvider::processRequest(RequestScope& scope, Texts const& parts, Text const& startPath,
                                   bool isReference) {
    Handles const namespaces = m_model.elementsByTagName(m_model.root(), u"namespace");
    if (namespaces.empty()) {
        raise(1170809568, pathSource, 589, namespaceFunction);
    }
    m_rootNamespace = namespaces.front();
    if (startPath.empty()) {
        Text const path = u"[" + nameOf(m_rootNamespace) + u"]";
        Texts names;
        if (!splitStartPath(path, names)) {
            raise(1170869272, pathSource, 615, namespaceFunction);
        }
        processRequest(scope, names, path, isReference);
        return;
    }
    Handles found;
    for (Handle candidate : namespaces) {
        if (nameOf(candidate) == parts.front()) {
            found.push_back(candidate);
            break;
        }
    }
    if (found.size() != 1) {
        raise(1171025905, pathSource, 808, nameFunction, {parts.front()});
    }
    if (isReference) {
        processReference(scope, parts, startPath, found, false);
        return;
    }
    walkStartPath(scope, parts, startPath, found);
}

void NaiveProvider::walkStartPath(RequestScope& scope, Texts const& parts, Text const& startPath,
                                  Handles found) {
    Text currentClass = classOf(found.front());
    Path path = {{parts.front(), currentClass}};
    Texts collections = scope.request.collectionsForClass(currentClass);
    if (asksForAllCollections(collections)) {
        collections = allCollections(m_model.properties(found.front()));
    }
    bool followedShortcut = false;
    for (std::size_t cursor = 1; cursor < parts.size(); ++cursor) {
        Text const& part = parts[cursor];
        bool const lastPart = cursor + 1 == parts.size();
        for (std::size_t c = 0; c < collections.size(); ++c) {
            Handles items;
            loadCollection(m_model, found.front(), collections[c], items);
            if (findItemInCollection(part, items, path)) {
                found = items;
                currentClass = collections[c];
                if (currentClass == u"shortcut" && !lastPart) {
                    followedShortcut = true;
                    findShortcutReference(part, found.front(), currentClass);
                }
                break;
            }
            if (c + 1 == collections.size() && lastPart) {
                raise(1171025905, pathSource, 780, nameFunction, {part});
            }
        }
    }
    writeObjects(scope, currentClass, startPath, path, scope.document.result(), found, 1,
                 {false, followedShortcut, true});
}

bool NaiveProvider::findItemInCollection(Text const& wanted, Handles& items, Path& path) const {
    Text value;
    for (Handle item : items) {
        m_model.readProperty(item, u"name", value, m_host.locale);
        Text className = classOf(item);
        Text const matchedName = value;
        if (value != wanted) {
            m_model.readProperty(item, u"name", value, m_defaultLocale);
        }
        bool const matches =
            (!value.empty() && value == wanted) || matchesInSupportedLocale(wanted, items);
        if (!matches) {
            continue;
        }
        path.push_front({matchedName, className});
        if (className == u"shortcut") {
            Handle copy = item;
            findShortcutReference(matchedName, copy, className);
        }
        if (className != u"namespace" && className != u"queryItemFolder") {
            Handle ancestor = m_model.getParent(item);
            while (ancestor && m_model.getParent(ancestor)) {
                m_model.readProperty(ancestor, u"name", value, m_host.locale);
                path.push_back({value, classOf(ancestor)});
                ancestor = m_model.getParent(ancestor);
            }
        }
        items = Handles{item};
        return true;
    }
    return false;
}

// Locale j is paired with item j, whichever item is being looked at. Past the last item there is
// no name.
bool NaiveProvider::matchesInSupportedLocale(Text const& wanted, Handles const& items) const {
    bool matches = false;
    for (std::size_t j = 0; j < m_supportedLocales.size(); ++j) {
        Text name;
        m_model.readProperty(j < items.size() ? items[j] : nullptr, u"name", name,
                             m_supportedLocales[j]);
        if (name == wanted) {
            matches = true;
        }
    }
    return matches;
}

} // namespace naive
