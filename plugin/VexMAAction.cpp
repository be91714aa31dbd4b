#include "plugin/VexMAAction.h"

#include "KRLIDOM_Node.h"
#include "VexParams.h"
#include "model/VexFailure.h"
#include "plugin/VexParameters.h"
#include "provider/VexConstants.h"
#include "provider/VexMDMaProvider.h"

VexMAAction::VexMAAction(VexSession& session) : m_session(&session) {}

VexMAAction::~VexMAAction() = default;

void VexMAAction::doRequest(VexParams const& in, VexParams& out) {
    validateParameter(in[0], VexVariant::Long); // checked and never read
    validateParameter(in[1], VexVariant::String);
    validateParameter(in[2], VexVariant::Node);
    // Before anything is kept: a refused request leaves the session as it was.
    validateResponse(out[1]);
    I18NString const modelPath = *static_cast<I18NString*>(in[1]);
    if (m_provider == nullptr) {
        // quirk: first-model-path-stays
        // Later requests run on this provider, whatever path they name.
        m_provider = std::make_unique<VexMDMaProvider>(*m_session, modelPath);
    }
    auto* const request = static_cast<KRLIDOM_Node*>(in[2]);
    auto* const response = static_cast<KRLIDOM_Node*>(out[1]);
    m_provider->doRequest(*request, *response);

    VexVariant result;
    result = 1L;
    out.AddParam(result);
    result = static_cast<void*>(response);
    out.AddParam(result);
}

void VexMAAction::validateResponse(VexVariant const& parameter) {
    validateParameter(parameter, VexVariant::Node);
    if (!HoldsElement(parameter)) {
        RaiseFailure(VexFailure::MetadataParameterType);
    }
}

void VexMAAction::validateParameter(VexVariant const& parameter, unsigned short expectedType) {
    if (!HasParameterType(parameter, expectedType)) {
        RaiseFailure(VexFailure::MetadataParameterType);
    }
}
