#pragma once

#include "VexExport.h"

class VexSession;

/// An event of a session. The host's, and valid during `VexPluginInterface::Notify`.
class VEX_PLATFORM_API VexNotification {
public:
    /// @{
    /// The kinds that hosts send. On the last two a plug-in drops what it keeps
    /// for the session, and nothing else makes it do so: not `Terminate`, and not a
    /// failure, after which a host may send `ModelReloaded` to start afresh.
    static constexpr int SessionOpened = 0;
    static constexpr int SessionClosed = 1;
    static constexpr int ModelReloaded = 2;
    /// @}

    /// The kind; numbers other than the three above are free.
    virtual int GetKind() const = 0;
    /// The session that the event concerns.
    virtual VexSession& GetSession() const = 0;

protected:
    virtual ~VexNotification();
};
