#include "tests/naive/NaiveProvider.h"

namespace naive {

Text NaiveProvider::referenceOf(RequestScope& scope, const Path& path) const {
    Texts segments;
    for (const ElementInfo& info : path) {
        Text namespaceName;
        if (isNamespaceBoundary(scope, info, namespaceName)) {
            segments.insert(segments.begin(), namespaceName);
            break;
        }
        const bool segment = info.className == u"querySubject" || info.className == u"filter" ||
                             info.className == u"calculation" || info.className == u"queryItem";
        if (segment || isShortcutToSegment(scope, info)) {
            segments.insert(segments.begin(), info.name);
        }
    }
    Text reference;
    for (const Text& segment : segments) {
        if (!reference.empty()) {
            reference += u".";
        }
        reference += u"[" + segment + u"]";
    }
    return reference;
}

bool NaiveProvider::isNamespaceBoundary(RequestScope& scope, const ElementInfo& info,
                                        Text& namespaceName) const {
    if (info.className == u"namespace") {
        namespaceName = info.name;
        return true;
    }
    if (info.className != u"shortcut") {
        return false;
    }
    Text value;
    for (Handle shortcut : m_model.elementsByTagName(m_rootNamespace, u"shortcut")) {
        scope.budget.spend();
        m_model.readProperty(shortcut, u"name", value, scope.locale);
        if (value != info.name) {
            continue;
        }
        Handle target = shortcut;
        Text targetClass;
        findShortcutReference(info.name, target, targetClass);
        if (targetClass == u"namespace") {
            namespaceName = info.name;
            return true;
        }
        if (const Handle enclosing = parentNamespace(m_model, shortcut)) {
            m_model.readProperty(enclosing, u"name", value, scope.locale);
            namespaceName = value;
            return true;
        }
    }
    return false;
}

bool NaiveProvider::isShortcutToSegment(RequestScope& scope, const ElementInfo& info) const {
    if (info.className != u"shortcut") {
        return false;
    }
    Text value;
    for (Handle shortcut : m_model.elementsByTagName(m_rootNamespace, u"shortcut")) {
        scope.budget.spend();
        m_model.readProperty(shortcut, u"name", value, scope.locale);
        if (value != info.name) {
            continue;
        }
        Handle target = shortcut;
        Text targetClass;
        findShortcutReference(info.name, target, targetClass);
        if (targetClass == u"querySubject" || targetClass == u"filter" ||
            targetClass == u"calculation") {
            return true;
        }
    }
    return false;
}

} // namespace naive
