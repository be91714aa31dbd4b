#pragma once

#include "VexErrorCode.h"
#include "VexExport.h"
#include "VexParams.h"
#include "VexVariant.h"

class VexException;
class VexNotification;
class VexSession;

/// What a plug-in implements and a host calls.
///
/// The host makes the object through the factory, calls `Initialize` once, then
/// any number of `DoAction` and `Notify`, then `Terminate`, and deletes it.
/// Actions of different sessions may run at once on different threads; two
/// actions of one session never do.
///
/// A plug-in's own failures are `VexException` or `KRLException`, of no type of its own: the code
/// of one is gone when the plug-in is unloaded. What a host's operation raises passes through it
/// unchanged, whatever its type, and so does `std::bad_alloc`: a host catches what it throws
/// itself, `std::bad_alloc`, and `KRLException` for the rest.
///
/// The order of the virtual operations is part of the contract.
class VEX_PLATFORM_API VexPluginInterface {
public:
    /// Gives 1 when the plug-in is ready. `parameters` is the host's own text.
    virtual int Initialize(char const* parameters) = 0;
    /// Ends the plug-in's work; no other call follows. It does not know the sessions:
    /// what it keeps for one goes with the notification that the session closed, so a
    /// host closes its sessions first.
    virtual int Terminate(char const* parameters) = 0;

    /// Does the action whose number `action` holds. Gives `Handled` when the
    /// number is the plug-in's own, else `NotHandled`. Results are appended to `out`.
    /// `exception` is for plug-ins that do not throw; `vexma` and `VexLoadedPlugin` ignore it.
    virtual VexErrorCode DoAction(VexSession& session, VexVariant const& action,
                                  VexException& exception, VexParams const& in, VexParams& out) = 0;

    /// The same with a place for one result; plug-ins that have none need not
    /// override it. The base gives `NotHandled` and touches nothing.
    virtual VexErrorCode DoAction(VexSession& session, VexVariant const& action,
                                  VexException& exception, VexParams const& in, VexParams& out,
                                  VexVariant* result);

    /// Tells of an event of a session; see `VexNotification` for the kinds.
    virtual void Notify(VexNotification const& notification) = 0;

    virtual ~VexPluginInterface();
};
