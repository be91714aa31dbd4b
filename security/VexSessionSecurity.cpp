#include "security/VexSessionSecurity.h"

#include "VexSession.h"
#include "model/VexModelPath.h"
#include "provider/VexConstants.h"

bool VexSessionSecurity::setModelPath(I18NString const& modelPath) {
    VexModelPath const read = ReadModelPath(modelPath);
    // quirk: outside-content-for-good
    // Never cleared again: one such path lifts the restrictions of all later
    // ones. Kept on purpose.
    m_nonContentPath = m_nonContentPath || read.outsideContent;
    bool const changed = read.path != m_modelPath;
    m_modelPath = read.path;
    return changed;
}

void VexSessionSecurity::retrieve() {
    if (m_retrieved) {
        return;
    }
    VexModelService* const service = m_session.GetModelService();
    m_source = service != nullptr ? service->GetSecurityInfoSource(m_modelPath) : nullptr;
    if (m_source == nullptr) {
        RaiseFailure(m_rules.withoutSource);
    }
    m_source->GetAvailableViews(m_availableViews);
    if (m_availableViews.empty()) {
        RaiseFailure(m_rules.withoutViews);
    }
    m_source->GetRoles(m_roles);
    // A source may fill the views again while it is asked for the roles.
    bool const testsRoles = m_rules.lastTest == VexSecurityRules::LastTest::Roles;
    if ((testsRoles ? m_roles : m_availableViews).empty()) {
        RaiseFailure(m_rules.lastTestFailed);
    }
    m_retrieved = true;
}

VexMDAccessEngine VexSessionSecurity::makeEngine(std::vector<I18NString> const& views,
                                                 I18NLocale const& locale) const {
    return VexMDAccessEngine(&m_session, views, m_roles, locale, m_nonContentPath);
}
