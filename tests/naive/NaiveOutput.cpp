#include "tests/naive/NaiveProvider.h"

namespace naive {

namespace {

constexpr int deepestLevel = 1024;

/// Withheld only when the entry that differs comes before any that lets the value pass.
bool passesConstraints(std::map<Text, Text> const& constraints, Text const& name,
                       Text const& value) {
    if (constraints.empty()) {
        return true;
    }
    bool set = false;
    for (auto const& [key, required] : constraints) {
        if (key == name && required != value) {
            break;
        }
        set = true;
    }
    return set;
}

} // namespace

void NaiveProvider::writeObjects(RequestScope& scope, Text const& className, Text const& startPath,
                                 Path const& path, ResponseElement& parent, Handles const& objects,
                                 int level, OutputFlags flags) {
    if (level > deepestLevel) {
        raise(1444379514, u"VexMDMaProvider", anyLine,
              u"VexMDMaProvider::GetRequestedElementTreeAtLevel", {startPath});
    }
    for (Handle object : objects) {
        writeObject(scope, className, startPath, path, parent, object, level, flags);
    }
}

void NaiveProvider::writeObject(RequestScope& scope, Text const& className, Text const& startPath,
                                Path const& path, ResponseElement& parent, Handle object, int level,
                                OutputFlags flags) {
    scope.budget.spend();
    if (className == u"shortcut") {
        auto node =
            writeShortcut(scope, object, startPath, path, level, flags.pathHoldsElement, true);
        if (node) {
            parent.children.push_back(std::move(node));
        }
        return;
    }
    Text pathText = startPath;
    Path records = path;
    Text const tag = classOf(object) == u"namespace" ? Text(u"folder") : classOf(object);
    std::unique_ptr<ResponseElement> element = scope.document.createElement(tag);
    if (!setAttributes(scope, className, object, flags, pathText, records, *element)) {
        return;
    }
    Text id;
    m_model.getId(object, id);
    bool const included = scope.engine.isIncluded(id, flags.skipViewLists);
    bool visible = false;
    if (!included && className == u"namespace") {
        Handle copy = object;
        visible = scope.visibility.isVisible(copy) == 1;
    }
    if (!visible && !included && !flags.isStart) {
        writeMembers(scope, tag, object, pathText, records, parent, level, flags);
        return;
    }
    ResponseElement& shown = *element;
    parent.children.push_back(std::move(element));
    if (scope.depth != 0 && level >= scope.depth) {
        return;
    }
    writeMembers(scope, tag, object, pathText, records, shown, level, flags);
}

bool NaiveProvider::setAttributes(RequestScope& scope, Text const& className, Handle object,
                                  OutputFlags flags, Text& pathText, Path& records,
                                  ResponseElement& element) const {
    Texts names = scope.request.propertiesForClass(className);
    std::map<Text, Text> constraints;
    if (flags.isStart) {
        constraints = scope.request.constraintsForClass(className);
    }
    Text const objectName = nameOf(object);
    if (names == Texts{u"*"}) {
        names = allAttributes(m_model.properties(object));
    }
    bool anySet = false;
    for (Text const& name : names) {
        Text value;
        if (name == u"_path") {
            if (!flags.isStart) {
                pathText += u".[" + objectName + u"]";
            }
            value = pathText;
        } else if (name == u"_ref") {
            if (!flags.pathHoldsElement && !flags.isStart) {
                records.push_front({objectName, classOf(object)});
            }
            value = referenceOf(scope, records);
        } else {
            m_model.readProperty(object, name, value, scope.locale);
        }
        if (!value.empty() && isXmlName(name) && passesConstraints(constraints, name, value)) {
            element.attributes[name] = value;
            anySet = true;
        }
    }
    return anySet;
}

void NaiveProvider::writeMembers(RequestScope& scope, Text const& tag, Handle object,
                                 Text const& pathText, Path const& records, ResponseElement& parent,
                                 int level, OutputFlags flags) {
    Texts collections = scope.request.collectionsForClass(tag);
    if (asksForAllCollections(collections)) {
        collections = allCollections(m_model.properties(object));
    }
    for (Text const& collection : collections) {
        Handles members;
        loadCollection(m_model, object, collection, members);
        if (members.empty()) {
            continue;
        }
        if (collection != u"shortcut") {
            writeObjects(scope, collection, pathText, records, parent, members, level + 1,
                         {flags.pathHoldsElement, flags.skipViewLists, false});
            continue;
        }
        for (Handle member : members) {
            auto node = writeShortcut(scope, member, pathText, records, level + 1,
                                      flags.pathHoldsElement, false);
            if (node) {
                parent.children.push_back(std::move(node));
            }
        }
    }
}

} // namespace naive
