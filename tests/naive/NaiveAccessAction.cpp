#include "tests/naive/NaiveAccessAction.h"

namespace naive {

namespace {

const Text source = u"VexAccessAction";
const Text securityFunction = u"VexAccessAction::RetrieveSecurityInfo";

} // namespace

bool NaiveAccessAction::isAccessible(const Text& modelPath, Handle object, long mode) {
    const Text before = m_modelPath;
    takePath(modelPath);
    const bool changed = m_modelPath != before;
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

void NaiveAccessAction::takePath(const Text& modelPath) {
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
    const std::optional<SecuritySource> found =
        m_host.catalogue
            ? m_host.catalogue->source(m_modelPath, m_host.user, m_host.model.defaultLocale())
            : std::nullopt;
    if (!found) {
        raise(1444335572, source, anyLine, securityFunction);
    }
    m_views = found->views;
    if (m_views.empty()) {
        raise(1170699671, source, anyLine, securityFunction);
    }
    m_roles = found->roles;
    if (m_roles.empty()) {
        raise(1170699671, source, anyLine, securityFunction);
    }
    m_securityRetrieved = true;
}

} // namespace naive
