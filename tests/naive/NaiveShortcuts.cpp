#include "tests/naive/NaiveProvider.h"

#include <algorithm>

namespace naive {

namespace {

Text const shortcutsSource = u"VexMDMaProvider";

} // namespace

void NaiveProvider::findShortcutReference(Text const& name, Handle& shortcut,
                                          Text& targetClass) const {
    Handle target = nullptr;
    for (Handle property : m_model.properties(shortcut)) {
        Text reference;
        if (classOf(property) != u"refobj" || !m_model.getValue(property, reference)) {
            continue;
        }
        target = m_model.objectWithReference(reference);
        if (!target) {
            raise(1171122674, shortcutsSource, 550, u"VexMDMaProvider::FindShortcutReference",
                  {name});
        }
        m_model.getName(target, targetClass);
        break;
    }
    shortcut = target;
}

std::unique_ptr<ResponseElement> NaiveProvider::writeShortcut(RequestScope& scope, Handle shortcut,
                                                              Text const& parentPath,
                                                              Path const& path, int level,
                                                              bool pathHoldsElement, bool atStart) {
    scope.budget.spend();
    Path records = path;
    Text const name = nameOf(shortcut);
    Handle target = nullptr;
    Text targetClass;
    for (Handle property : m_model.properties(shortcut)) {
        Text reference;
        if (classOf(property) != u"refobj" || !m_model.getValue(property, reference)) {
            continue;
        }
        target = m_model.objectWithReference(reference);
        if (!target) {
            raise(1170588191, shortcutsSource, 2080, u"VexMDMaProvider::processShortCutCollection");
        }
        m_model.getName(target, targetClass);
    }
    if (name.empty() || targetClass.empty()) {
        return nullptr;
    }
    Text pathText = parentPath;
    if (!atStart) {
        pathText += u".[" + name + u"]";
        records.push_front({name, u"shortcut"});
    }
    Text const reference = referenceOf(scope, records);
    Texts const collections = scope.request.collectionsForClass(targetClass);
    if (targetClass == u"namespace") {
        targetClass = u"folder";
    }
    std::unique_ptr<ResponseElement> element = scope.document.createElement(targetClass);
    Texts names = scope.request.propertiesForClass(targetClass);
    if (names == Texts{u"*"}) {
        names = allAttributes(m_model.properties(target));
    }
    setShortcutAttributes(scope, names, shortcut, target, name, pathText, reference, *element);
    if (scope.depth != 0 && level >= scope.depth) {
        return element;
    }
    bool const endless = scope.depth == 0 &&
                         std::count(scope.expanding.begin(), scope.expanding.end(), shortcut) != 0;
    if (endless) {
        return element;
    }
    scope.expanding.push_back(shortcut);
    for (Text const& collection : collections) {
        Handles members;
        loadCollection(m_model, target, collection, members);
        if (!members.empty()) {
            writeObjects(scope, collection, pathText, records, *element, members, level + 1,
                         {pathHoldsElement, true, false});
        }
    }
    scope.expanding.pop_back();
    return element;
}

// One value for the whole loop: a property that neither object has repeats what came before it.
void NaiveProvider::setShortcutAttributes(RequestScope const& scope, Texts const& names,
                                          Handle shortcut, Handle target, Text const& name,
                                          Text const& pathText, Text const& reference,
                                          ResponseElement& element) const {
    Text value;
    for (Text const& property : names) {
        if (property == u"name") {
            value = name;
        } else if (property == u"_path") {
            value = pathText;
        } else if (property == u"_ref") {
            value = reference;
        } else {
            Text own;
            if (property == u"screenTip" || property == u"description") {
                m_model.readProperty(shortcut, property, own, scope.locale);
            }
            if (own.empty()) {
                m_model.readProperty(target, property, value, scope.locale);
            } else {
                value = own;
            }
        }
        if (isXmlName(property)) {
            element.attributes[property] = value;
        }
    }
}

} // namespace naive
