#include "tests/naive/NaiveAccessEngine.h"

#include "tests/naive/NaiveFailure.h"

#include <algorithm>
#include <utility>

namespace naive {

namespace {

Text const engineSource = u"VexMDAccessEngine";
Text const populateFunction = u"VexMDAccessEngine::populateAccessInfo";
Text const anyLocale;

bool contains(Texts const& list, Text const& text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

} // namespace

NaiveAccessEngine::NaiveAccessEngine(PlainModel const& model, Texts requestedViews, Texts roles,
                                     bool unrestricted)
    : m_model(model), m_requestedViews(std::move(requestedViews)), m_roles(std::move(roles)),
      m_enforced(!unrestricted) {}

bool NaiveAccessEngine::isIncluded(Text const& id, bool skipViewLists) {
    if (!m_enforced) {
        return true;
    }
    populate();
    if (m_includedIds.count(id) == 0 && !skipViewLists) {
        return false;
    }
    if (!m_hasRoleBasedViews) {
        return true;
    }
    if (m_hasDefaultView) {
        if (m_roleIncludedIds.count(id) != 0) {
            return true;
        }
        if (m_roleExcludedIds.count(id) != 0) {
            return false;
        }
        return m_defaultExcludedIds.count(id) == 0;
    }
    if (m_roleHiddenIds.count(id) != 0) {
        return false;
    }
    return m_roleIncludedIds.count(id) != 0;
}

void NaiveAccessEngine::populate() {
    if (m_populated) {
        return;
    }
    Handles const views = m_model.elementsByTagName(m_model.root(), u"securityView");
    if (views.empty()) {
        raise(1170839636, engineSource, anyLine, populateFunction);
    }
    Handles requested;
    for (Handle view : views) {
        Text id;
        m_model.getId(view, id);
        if (contains(m_requestedViews, id)) {
            requested.push_back(view);
        }
    }
    if (requested.empty()) {
        raise(1170551942, engineSource, anyLine, populateFunction);
    }
    for (Handle view : requested) {
        loadIds(view, u"included", m_includedIds);
    }
    filterSecurityViews(views);
    m_populated = true;
}

void NaiveAccessEngine::filterSecurityViews(Handles const& views) {
    m_hasRoleBasedViews = false;
    Handle defaultView = nullptr;
    for (Handle view : views) {
        if (!isRoleBased(view)) {
            continue;
        }
        m_hasRoleBasedViews = true;
        Handles const members = m_model.elementsByTagName(view, u"member");
        if (members.empty()) {
            defaultView = view;
            continue;
        }
        Text role;
        m_model.readProperty(members.front(), u"roleId", role, anyLocale);
        if (contains(m_roles, role)) {
            loadIds(view, u"included", m_roleIncludedIds);
            loadIds(view, u"excluded", m_roleExcludedIds);
            loadIds(view, u"hidden", m_roleHiddenIds);
        }
    }
    if (defaultView) {
        m_hasDefaultView = true;
        loadIds(defaultView, u"excluded", m_defaultExcludedIds);
    }
}

bool NaiveAccessEngine::isRoleBased(Handle view) const {
    Handle const property = m_model.propertyByName(view, u"roleBased", anyLocale);
    if (!property) {
        return false;
    }
    Text value;
    m_model.getValue(property, value);
    if (value == u"true") {
        return true;
    }
    if (value == u"false") {
        return false;
    }
    return leadingInteger(value) != 0;
}

void NaiveAccessEngine::loadIds(Handle view, Text const& listKind, std::set<Text>& ids) const {
    for (Handle set : m_model.elementsByTagName(view, u"set")) {
        Text kind;
        m_model.readProperty(set, u"kind", kind, anyLocale);
        if (kind.empty() || kind != listKind) {
            continue;
        }
        for (Handle entry : m_model.elementsByTagName(set, u"item")) {
            Text id;
            m_model.getValue(entry, id);
            ids.insert(id);
        }
    }
}

} // namespace naive
