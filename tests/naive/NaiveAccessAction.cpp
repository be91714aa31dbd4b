#include "tests/naive/NaiveAccessAction.h"

namespace naive {

namespace {

Text const actionSource = u"VexAccessAction";
Text const securityFunction = u"VexAccessAction::RetrieveSecurityInfo";

} // namespace

bool NaiveAccessAction::isAccessible(Text const& modelPath, Handle object, long mode) {
    Text const before = m_modelPath;
    takePath(modelPath);
    bool const changed = m_modelPath != before;
    if (changed) {
        m_securityRetrieved = false;
    }
    if (!m_nonContentPath) {
        retrieveSecurityInfo();
    }
    if (!m_engine || changed) {
        m_engine =
            std::make_unique<NaiveAccessEngine>(m_host.model, m_views, m_roles, m_nonContentPath);
    }
    Text id;
    m_host.model.getId(object, id);
    return m_engine->isIncluded(id, mode == 1);
}

void NaiveAccessAction::takePath(Text const& modelPath) {
    if (findText(modelPath, u"path:") == 0) {
        m_modelPath = substring(modelPath, 5, -1);
        return;
    }
    if (substring(modelPath, 0, 9) != u"/content/") {
        m_nonContentPath = true;
    }
    m_modelPath = modelPath;
}

void NaiveAccessAction::retrieveSecurityInfo() {
    if (m_securityRetrieved) {
        return;
    }
    std::optional<SecuritySource> const found =
        m_host.catalogue
            ? m_host.catalogue->source(m_modelPath, m_host.user, m_host.model.defaultLocale())
            : std::nullopt;
    if (!found) {
        raise(1444335572, actionSource, anyLine, securityFunction);
    }
    m_views = found->views;
    if (m_views.empty()) {
        raise(1170699671, actionSource, anyLine, securityFunction);
    }
    m_roles = found->roles;
    if (m_roles.empty()) {
        raise(1170699671, actionSource, anyLine, securityFunction);
    }
    m_securityRetrieved = true;
}

} // namespace naive
