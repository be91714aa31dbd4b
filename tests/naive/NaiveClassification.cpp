#include "tests/naive/NaiveProvider.h"

namespace naive {

Text NaiveProvider::referenceOf(RequestScope& scope, Path const& path) const {
    Texts segments;
    for (ElementInfo const& info : path) {
        Text namespaceName;
        if (isNamespaceBoundary(scope, info, namespaceName)) {
            segments.insert(segments.begin(), namespaceName);
            break;
        }
        bool const segment = info.className == u"querySubject" || info.className == u"filter" ||
                             info.className == u"calculation" || info.className == u"queryItem";
        if (segment || isShortcutToSegment(scope, info)) {
            segments.insert(segments.begin(), info.name);
        }
    }
    Text reference;
    for (Text const& segment : segments) {
        if (!reference.empty()) {
            reference += u".";
        }
        reference += u"[" + segment + u"]";
    }
    return reference;
}

bool NaiveProvider::isNamespaceBoundary(RequestScope& scope, ElementInfo const& info,
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
        if (Handle const enclosing = parentNamespace(m_model, shortcut)) {
            m_model.readProperty(enclosing, u"name", value, scope.locale);
            namespaceName = value;
            return true;
        }
    }
    return false;
}

bool NaiveProvider::isShortcutToSegment(RequestScope& scope, ElementInfo const& info) const {
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
