#pragma once

#include "I18NString.h"

#include <memory>

class VexMDMaProvider;
class VexParams;
class VexSession;
class VexVariant;

/// Serves the metadata requests of one session. Made at the session's first
/// request and kept, with its provider, until the session ends.
class VexMAAction {
public:
    explicit VexMAAction(VexSession& session);
    VexMAAction(VexMAAction const&) = delete;
    VexMAAction& operator=(VexMAAction const&) = delete;
    virtual ~VexMAAction();

    /// `in`: a long, the model path, the request node. `out[1]`: the response
    /// node. Appends the long 1 and the response node to `out`, only when the
    /// request was answered.
    void doRequest(VexParams const& in, VexParams& out);

    /// Raises when the parameter is not of that type.
    void validateParameter(VexVariant const& parameter, unsigned short expectedType);

private:
    /// Raises when the parameter is not an element to write into.
    void validateResponse(VexVariant const& parameter);

    VexSession* m_session;
    std::unique_ptr<VexMDMaProvider> m_provider; // null until the first valid request
};
