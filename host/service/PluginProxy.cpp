#include "host/service/PluginProxy.h"

#include "VexPluginExtension.h"
#include "VexTrace.h"
#include "host/service/HostNotification.h"
#include "host/service/LastingException.h"
#include "host/service/PluginException.h"
#include "host/service/PluginGuard.h"

namespace vex {

namespace {

void requirePath(HostSession const& session, I18NString const& modelPath) {
    if (PathConfinement const* const confinement = session.confinement()) {
        confinement->require(modelPath);
    }
}

} // namespace

/// A call of a session while it runs: checks that it may, and counts it.
class PluginProxy::Running {
public:
    Running(PluginProxy& proxy, HostSession& session, char const* operation)
        : m_proxy(proxy), m_turn(session) {
        m_proxy.m_running.fetch_add(1);
        if (m_proxy.m_state.load() != State::Ready) {
            refuse(PluginFault::NotReady,
                   " was called by the host outside Initialize and Terminate; initialise it first",
                   operation);
        }
        if (!m_turn.isTaken()) {
            refuse(PluginFault::SessionBusy,
                   " was called by the host while another call of the same session runs; a session "
                   "does one thing at a time: wait for its answer, or open a second session",
                   operation);
        }
    }
    Running(Running const&) = delete;
    Running& operator=(Running const&) = delete;
    ~Running() { m_proxy.m_running.fetch_sub(1); }

private:
    [[noreturn]] void refuse(PluginFault fault, char const* text, char const* operation) {
        m_proxy.m_running.fetch_sub(1);
        throw PluginException(fault, m_proxy.described(operation) + text);
    }

    PluginProxy& m_proxy;
    HostSession::Turn m_turn;
};

template <class Call> auto PluginProxy::guarded(char const* operation, Call const& call) const {
    return guardedCall(getFile(), operation, PluginRaises::Platform, [&] {
        try {
            return call();
        } catch (KRLException const&) { // the plug-in may be unloaded on its way out
            raiseLasting(m_library, described(operation));
        }
    });
}

template <class Call>
auto PluginProxy::guardedSetUp(char const* operation, Call const& call) const {
    return guardedCall(getFile(), operation, PluginRaises::Nothing, call);
}

// The table of that id; null when the plug-in has none.
template <class Extension> Extension const* PluginProxy::findExtension() const {
    auto const entry = reinterpret_cast<VexGetExtension>(m_library.findExport(VexGetExtensionName));
    return guardedSetUp("getExtension", [&] {
        return static_cast<Extension const*>(entry != nullptr ? entry(Extension::Id) : nullptr);
    });
}

template <class Extension>
Extension const& PluginProxy::offered(Extension const* extension, char const* operation) const {
    if (extension == nullptr) {
        throw PluginException(PluginFault::NotOffered,
                              described(operation) +
                                  " is not offered by this plug-in; ask for the answers alone, or "
                                  "use a plug-in that has the extension " +
                                  Extension::Id);
    }
    return *extension;
}

PluginProxy::PluginProxy(std::string const& file, std::string const& name)
    : m_library(file), m_creator(m_library.findCreator(name)),
      m_explainAccess(findExtension<VexExplainAccess>()),
      m_explainTree(findExtension<VexExplainTree>()), m_answerAt(findExtension<VexAnswerAt>()) {
    guardedSetUp("create", [&] { m_plugin.emplace(m_creator); });
}

PluginProxy::~PluginProxy() {
    if (m_state.load() == State::Ready) {
        try {
            terminateObject("");
        } catch (KRLException const& problem) {
            OutputDebugString(problem.what()); // nobody is left to be told
        }
    }
    PluginCall const underWay(getFile(), "the deletion");
    m_plugin.reset();
}

void PluginProxy::Initialize(char const* parameters) {
    if (m_state.load() != State::Loaded) {
        throw PluginException(PluginFault::NotReady,
                              described("Initialize") + " was called by the host a second time");
    }
    if (guardedSetUp("Initialize", [&] { return (*m_plugin)->Initialize(parameters); }) != 1) {
        throw PluginException(PluginFault::NotReady,
                              described("Initialize") + " says that the plug-in is not ready");
    }
    m_state.store(State::Ready);
}

void PluginProxy::Terminate(char const* parameters) {
    State ready = State::Ready;
    if (!m_state.compare_exchange_strong(ready, State::Terminated)) {
        throw PluginException(PluginFault::NotReady,
                              described("Terminate") +
                                  " was called by the host outside Initialize and Terminate");
    }
    if (m_running.load() != 0) {
        m_state.store(State::Ready);
        throw PluginException(PluginFault::CallsUnderWay,
                              described("Terminate") +
                                  " was called by the host while a call runs; wait for its end");
    }
    terminateObject(parameters);
}

void PluginProxy::terminateObject(char const* parameters) {
    m_state.store(State::Terminated);
    constexpr int isDone = 1;
    int const result =
        guardedSetUp("Terminate", [&] { return (*m_plugin)->Terminate(parameters); });
    if (result != isDone) {
        throw PluginException(PluginFault::NotReady,
                              described("Terminate") + " gave " + std::to_string(result) +
                                  ": the plug-in did not end its work in order");
    }
}

VexErrorCode PluginProxy::DoAction(HostSession& session, VexVariant const& action,
                                   VexParams const& in, VexParams& out) {
    if (PathConfinement const* const confinement = session.confinement()) {
        confinement->requireIn(action, in);
    }
    Running const running(*this, session, "DoAction");
    return guarded("DoAction", [&] {
        VexException unused(0);
        return (*m_plugin)->DoAction(session, action, unused, in, out);
    });
}

void PluginProxy::Notify(HostSession& session, int kind) {
    Running const running(*this, session, "Notify");
    guarded("Notify", [&] { (*m_plugin)->Notify(HostNotification(kind, session)); });
}

void PluginProxy::explainAccess(HostSession& session, I18NString const& modelPath,
                                Vex_Handle_Collection const& objects, bool skipViewLists,
                                VexAccessExplanation& explanation) {
    VexExplainAccess const& extension = offered(m_explainAccess, "explainAccess");
    requirePath(session, modelPath);
    Running const running(*this, session, "explainAccess");
    guarded("explainAccess",
            [&] { extension.explain(session, modelPath, objects, skipViewLists, explanation); });
}

void PluginProxy::explainTree(HostSession& session, I18NString const& modelPath,
                              KRLIDOM_Node& request, KRLIDOM_Node* response,
                              VexTreeObserver& observer) {
    VexExplainTree const& extension = offered(m_explainTree, "explainTree");
    requirePath(session, modelPath);
    Running const running(*this, session, "explainTree");
    guarded("explainTree",
            [&] { extension.explain(session, modelPath, request, response, observer); });
}

void PluginProxy::answerAt(HostSession& session, I18NString const& modelPath, KRLIDOM_Node& request,
                           KRLIDOM_Node* response, VEX_HANDLE object, VexTreeObserver* observer) {
    VexAnswerAt const& extension = offered(m_answerAt, "answerAt");
    requirePath(session, modelPath);
    Running const running(*this, session, "answerAt");
    guarded("answerAt",
            [&] { extension.answer(session, modelPath, request, response, object, observer); });
}

std::string PluginProxy::described(char const* operation) const {
    return describedCall(getFile(), operation);
}

} // namespace vex
