#include "plugin/VexAccessAction.h"

#include "VexParams.h"
#include "VexSession.h"
#include "model/VexFailure.h"
#include "model/VexMDMaProviderUtility.h"
#include "plugin/VexParameters.h"
#include "provider/VexConstants.h"

VexAccessAction::VexAccessAction(VexSession& session)
    : m_session(&session), m_security(session, AccessSecurityRules) {}

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
    bool const changed = m_security.setModelPath(modelPath);
    if (changed) {
        m_security.forget();
    }
    if (!m_security.isOutsideContent()) {
        RetrieveSecurityInfo();
    }
    I18NLocale const* const locale = m_session->GetCurrentLocale();
    if (m_engine == nullptr || changed) {
        m_engine = std::make_unique<VexMDAccessEngine>(
            m_security.makeEngine(m_security.availableViews(), *locale));
    }
    return *m_engine;
}

void VexAccessAction::validateParameter(VexVariant const& value, unsigned short type) {
    if (!HasParameterType(value, type)) {
        RaiseFailure(VexFailure::AccessParameterType);
    }
}

void VexAccessAction::Initialize(I18NString const& modelPath) {
    m_security.setModelPath(modelPath);
}

void VexAccessAction::RetrieveSecurityInfo() {
    m_security.retrieve();
}
