#pragma once

#include "VexAccessExplanation.h"
#include "VexAnswerAt.h"
#include "VexException.h"
#include "VexPluginInterface.h"
#include "VexTreeExplanation.h"
#include "host/service/HostSession.h"
#include "host/service/PluginLibrary.h"
#include "host/service/PluginObject.h"

#include <atomic>
#include <optional>
#include <string>

namespace vex {

/// A loaded plug-in, called by the rules: `Initialize` first, one call of a
/// session at a time, nothing but `KRLException` out of it, and none of a type whose code
/// goes with the plug-in: that becomes a `KRLException` of the same text. Whoever breaks a
/// rule gets a `PluginException` that names the plug-in, in place of undefined
/// behaviour. A session that is confined to a model path may be asked about that one
/// only: `ForeignPathException`, and the plug-in hears nothing. Threads: any, for
/// different sessions.
class PluginProxy {
public:
    /// Without a name the metadata access plug-in, else the only one in the library.
    explicit PluginProxy(std::string const& file, std::string const& name = "");
    /// Terminates the plug-in when that has not been done, and unloads it.
    ~PluginProxy();
    PluginProxy(PluginProxy const&) = delete;
    PluginProxy& operator=(PluginProxy const&) = delete;

    /// Once, before any other call. `parameters` is handed to the plug-in.
    void Initialize(char const* parameters = "");
    /// Raises when the plug-in says, or shows, that it could not end its work.
    void Terminate(char const* parameters = "");

    VexErrorCode DoAction(HostSession& session, VexVariant const& action, VexParams const& in,
                          VexParams& out);
    /// Tells the plug-in about an event of the session.
    void Notify(HostSession& session, int kind);

    /// Why the plug-in decides about accessibility as it does: see
    /// `VexExplainAccess`. Not every plug-in offers it.
    void explainAccess(HostSession& session, I18NString const& modelPath,
                       Vex_Handle_Collection const& objects, bool skipViewLists,
                       VexAccessExplanation& explanation);

    /// How the plug-in treats each object of a metadata answer: see `VexExplainTree`.
    /// Not every plug-in offers it.
    void explainTree(HostSession& session, I18NString const& modelPath, KRLIDOM_Node& request,
                     KRLIDOM_Node* response, VexTreeObserver& observer);

    /// Answers a metadata request at an object: see `VexAnswerAt`. Not every plug-in
    /// offers it.
    void answerAt(HostSession& session, I18NString const& modelPath, KRLIDOM_Node& request,
                  KRLIDOM_Node* response, VEX_HANDLE object, VexTreeObserver* observer);

    std::string const& getFile() const { return m_library.getFile(); }

private:
    enum class State { Loaded, Ready, Terminated };
    class Running;

    template <class Call> auto guarded(char const* operation, Call const& call) const;
    template <class Call> auto guardedSetUp(char const* operation, Call const& call) const;
    template <class Extension> Extension const* findExtension() const;
    template <class Extension>
    Extension const& offered(Extension const* extension, char const* operation) const;
    void terminateObject(char const* parameters);
    std::string described(char const* operation) const;

    PluginLibrary m_library;
    VexPluginFactory::Creator& m_creator;
    /// @{
    /// Null when the plug-in does not offer it.
    VexExplainAccess const* m_explainAccess;
    VexExplainTree const* m_explainTree;
    VexAnswerAt const* m_answerAt;
    /// @}
    std::optional<PluginObject> m_plugin; // from construction on
    std::atomic<State> m_state{State::Loaded};
    std::atomic<unsigned> m_running{0}; // calls of sessions
};

} // namespace vex
