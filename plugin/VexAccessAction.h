#pragma once

#include "security/VexSessionSecurity.h"

#include <memory>

class VexParams;
class VexSession;
class VexVariant;
class Vex_Handle_Collection;
struct VexAccessExplanation;

/// Tells whether single objects are accessible in one session. Keeps the
/// security lists and the loaded engine for as long as the model path stays.
class VexAccessAction {
public:
    explicit VexAccessAction(VexSession& session);
    VexAccessAction(VexAccessAction const&) = delete;
    VexAccessAction& operator=(VexAccessAction const&) = delete;
    virtual ~VexAccessAction();

    /// `in`: a long, the model path, the object's handle, the mode (1 passes
    /// over the included lists of the views). Appends the long 1, then 1 when
    /// the object is included and 0 when it is not.
    void doAccessibility(VexParams const& in, VexParams& out);

    /// Decides for each of the objects as a request would, and says why.
    void explain(I18NString const& modelPath, Vex_Handle_Collection const& objects,
                 bool skipViewLists, VexAccessExplanation& explanation);

    /// Raises when the parameter is not of that type.
    void validateParameter(VexVariant const& value, unsigned short type);

    /// Stores the path. One outside the content store lifts all restrictions,
    /// for the rest of the action's life.
    void Initialize(I18NString const& modelPath);

    /// Reads views and roles, once for each model path.
    void RetrieveSecurityInfo();

private:
    /// The engine for a model path: the one at hand, or a new one when the path
    /// is another than last time.
    VexMDAccessEngine& engineFor(I18NString const& modelPath);

    VexSession* m_session;
    VexSessionSecurity m_security;               // of the model path asked about last
    std::unique_ptr<VexMDAccessEngine> m_engine; // null until the first check
};
