#include "plugin/VexAccessAction.h"

#include "VexParams.h"
#include "VexSession.h"
#include "model/VexFailure.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexModelPath.h"
#include "plugin/VexParameters.h"
#include "provider/VexConstants.h"
#include "security/VexMDAccessEngine.h"

VexAccessAction::VexAccessAction(VexSession& session) : m_session(&session) {}

VexAccessAction::~VexAccessAction() = default;

void VexAccessAction::doAccessibility(VexParams const& in, VexParams& out) {
    constexpr long skipViewLists = 1;
    validateParameter(in[0], VexVariant::Long); // checked and never read
    validateParameter(in[1], VexVariant::String);
    validateParameter(in[2], VexVariant::Handle);
    validateParameter(in[3], VexVariant::Long);
    I18NString const& modelPath = *static_cast<I18NString*>(in[1]);
    VEX_HANDLE const object(in[2]);
    long const mode(in[3]);

    VexMDAccessEngine& engine = engineFor(modelPath);
    I18NString id;
    VexMDMaProviderUtility::GetId(object, id);
    bool const included = engine.IsIncluded(id, mode == skipViewLists);

    out.AddParam(VexVariant(1L));
    out.AddParam(VexVariant(included ? 1L : 0L));
}

void VexAccessAction::explain(I18NString const& modelPath, Vex_Handle_Collection const& objects,
                              bool skipViewLists, VexAccessExplanation& explanation) {
    engineFor(modelPath).Explain(objects, skipViewLists, explanation);
}

VexMDAccessEngine& VexAccessAction::engineFor(I18NString const& modelPath) {
    I18NString const pathBefore = m_modelPath;
    Initialize(modelPath);
    bool const changed = m_modelPath != pathBefore;
    if (changed) {
        m_securityRetrieved = false;
    }
    if (!m_nonContentPath) {
        RetrieveSecurityInfo();
    }
    I18NLocale const* const locale = m_session->GetCurrentLocale();
    if (m_engine == nullptr || changed) {
        m_engine = std::make_unique<VexMDAccessEngine>(m_session, m_availableViews, m_roles,
                                                       *locale, m_nonContentPath);
    }
    return *m_engine;
}

void VexAccessAction::validateParameter(VexVariant const& value, unsigned short type) {
    if (!HasParameterType(value, type)) {
        RaiseFailure(VexFailure::AccessParameterType);
    }
}

void VexAccessAction::Initialize(I18NString const& modelPath) {
    VexModelPath const path = ReadModelPath(modelPath);
    // quirk: outside-content-for-good
    // Never cleared again: one such path lifts the restrictions of all later
    // ones. Kept on purpose.
    m_nonContentPath = m_nonContentPath || path.outsideContent;
    m_modelPath = path.path;
}

void VexAccessAction::RetrieveSecurityInfo() {
    if (m_securityRetrieved) {
        return;
    }
    VexModelService* const service = m_session->GetModelService();
    m_securitySource = service != nullptr ? service->GetSecurityInfoSource(m_modelPath) : nullptr;
    if (m_securitySource == nullptr) {
        RaiseFailure(VexFailure::AccessWithoutSource);
    }
    m_securitySource->GetAvailableViews(m_availableViews);
    if (m_availableViews.empty()) {
        RaiseFailure(VexFailure::AccessWithoutViews);
    }
    m_securitySource->GetRoles(m_roles);
    // quirk: access-refuses-without-roles
    // A user without roles is refused here, unlike in a metadata request. Kept
    // on purpose.
    if (m_roles.empty()) {
        RaiseFailure(VexFailure::AccessWithoutRoles);
    }
    m_securityRetrieved = true;
}
