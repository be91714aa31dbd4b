#pragma once

#include "VexHostExport.h"
#include "VexParams.h"
#include "VexPluginExtension.h"
#include "VexPluginInterface.h"

#include <memory>
#include <string>

/// A plug-in, loaded and ready: its library was opened, its platform version compared,
/// its hooks run, its object made and initialised. The other way round when it goes, so
/// close the sessions before. One file is loaded once in a process.
///
/// What comes out of the plug-in passes through, but what is of a type of the plug-in's
/// own, whose code goes with it: that becomes a `KRLException` of the same text, which can
/// be caught where the plug-in is unloaded already.
///
/// Threads: calls for different sessions may run at once, see `VexPluginInterface`.
class VEX_HOST_API VexLoadedPlugin {
public:
    /// The plug-in that the library registers under `name`; without a name the
    /// metadata access plug-in, else the only one in the library. `parameters` is handed
    /// to `Initialize` as it is. Raises `KRLException`, whose text says what to do, when the file
    /// cannot be loaded, is loaded already, was built for another platform, registers no
    /// such plug-in, raises anything while it is loaded, or when the plug-in says that it
    /// is not ready; and what its hooks and `Initialize` raise. A library that raised
    /// something while it was loaded stays in the process, and the system's loader is
    /// taken for other threads from then on: a host that has some had better end.
    explicit VexLoadedPlugin(std::string const& file, std::string const& name = "",
                             char const* parameters = "");
    VexLoadedPlugin(VexLoadedPlugin const&) = delete;
    VexLoadedPlugin& operator=(VexLoadedPlugin const&) = delete;
    /// Terminates the plug-in unless that was done, and unloads it. What the plug-in
    /// raises then goes to the trace.
    ~VexLoadedPlugin();

    /// Calls an action. True when it was done, false when the plug-in does not know the
    /// number; nothing was done then. Raises `KRLException` for any other result, and
    /// for a call after `terminate`; and whatever comes out of the plug-in.
    bool act(VexSession& session, long action, VexParams const& in, VexParams& out);

    /// Tells the plug-in of an event of the session. Raises as `act` does.
    void notify(VexSession& session, int kind);

    /// Ends the plug-in's work before the object goes, for a host that wants to hear of
    /// it: raises `KRLException` when the plug-in does not say that it is done, and what
    /// comes out of it. No call may follow or be under way. A second time does nothing.
    void terminate(char const* parameters = "");

    /// The absolute path of the library.
    std::string const& file() const;

    /// The plug-in itself, for calls that stand in no line above. Null after `terminate`.
    VexPluginInterface* get() const;

    /// The plug-in's extension of that type; null when it does not offer it. Lives as
    /// long as this object.
    template <class Extension> Extension const* findExtension() const {
        return static_cast<Extension const*>(findExtension(Extension::Id));
    }
    /// The same by its id; null has none. What an extension raises is not looked at:
    /// catch it while the plug-in is loaded.
    void const* findExtension(char const* id) const;

private:
    VexPluginInterface& ready(char const* operation) const;

    struct State;
    std::unique_ptr<State> m_state;
};
