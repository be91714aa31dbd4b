#pragma once

#include "apps/vexma/Console.h"
#include "apps/vexma/SourceOptions.h"
#include "host/service/Host.h"

#include <memory>

namespace vex {

/// What a command works with: the plug-in and a session on the model that the
/// command line names. The session is opened when it is made and closed when it
/// goes; the plug-in hears of both.
class Workplace {
public:
    Workplace(SourceOptions const& options, Console& console);
    /// A further session, with the plug-in of another workplace.
    Workplace(Workplace const& other, SourceOptions const& options,
              std::unique_ptr<HostSession> session);
    Workplace(Workplace const&) = delete;
    Workplace& operator=(Workplace const&) = delete;
    ~Workplace();

    HostSession& Session() { return *m_session; }
    /// The model path that actions are called with.
    I18NString const& modelPath() const { return m_modelPath; }

    /// Calls an action under the command line's limits; an interrupt ends it.
    ActionOutcome Call(VexVariant const& action, VexParams const& in);
    void Notify(int kind) { m_plugin->Notify(*m_session, kind); }
    /// Why objects are accessible or not, under the same limits.
    VexAccessExplanation explain(Vex_Handle_Collection const& objects, bool skipViewLists);

private:
    ActionLimits m_limits;
    I18NString m_modelPath;
    std::unique_ptr<HostSession> m_session;
    std::shared_ptr<PluginProxy> m_plugin;
};

/// The session that the options ask for, its model being read.
std::unique_ptr<HostSession> openSession(SourceOptions const& options, Console& console);

/// True when the plug-in did the action.
bool isHandled(ActionOutcome const& outcome);

/// Complains about a call that did not end as it should; gives the status to
/// end with.
int complainAbout(ActionOutcome const& outcome, Console& console);
int complainAbout(VexException const& raised, Console& console);

} // namespace vex
