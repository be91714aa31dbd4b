#pragma once

#include "VexAccessExplanation.h"
#include "VexTreeExplanation.h"
#include "host/service/ActionCall.h"
#include "host/service/CallEnd.h"
#include "host/service/MetadataRequest.h"
#include "host/service/SessionPool.h"
#include "host/service/Visit.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace vex {

/// A plug-in, loaded and initialised; "": the one that `findPluginFile` finds.
/// Raises `PluginException`.
std::shared_ptr<PluginProxy> loadPlugin(std::string const& file = "");

/// What a metadata request was answered.
struct MetadataAnswer {
    CallEnd end;
    KRLIDOM_OwnedDocument response; // as it stood when the call ended
};

/// What the accessibility of objects is.
struct AccessAnswer {
    CallEnd end;                // of the first object without a verdict, if there is one
    std::vector<bool> verdicts; // of the objects before that one, in the order of asking
};

/// Why it is so.
struct AccessReasons {
    CallEnd end;
    VexAccessExplanation explanation;
};

/// What a plug-in answers, for callers that know nothing of actions and
/// sessions. Threads: any; calls run side by side.
///
/// Each call ends at the deadline of its limits, or when they say that it is
/// cancelled. How it ended is part of its answer; it raises only what telling
/// the plug-in about a new session raises, and `std::bad_alloc` where there is no
/// memory for the answer itself. Which model is asked about, and for whom, the visit says;
/// no call takes a model path.
class Service {
public:
    static constexpr std::size_t MostIdleSessions = 64;

    /// The plug-in is initialised.
    explicit Service(std::shared_ptr<PluginProxy> plugin,
                     std::size_t mostIdleSessions = MostIdleSessions);

    /// @{
    /// The tree or package that a request asks for.
    MetadataAnswer metadata(Visit const& visit, MetadataRequest const& request,
                            ActionLimits const& limits);
    MetadataAnswer metadata(Visit const& visit, KRLIDOM_Document const& request,
                            ActionLimits const& limits);
    /// @}

    /// The same, told to the observer object by object, without the members that it does
    /// not want. Not every plug-in tells.
    MetadataAnswer observedMetadata(Visit const& visit, KRLIDOM_Document const& request,
                                    VexTreeObserver& observer, ActionLimits const& limits);

    /// @{
    /// The tree that a request asks for, at an object that is named by its id, else by
    /// its reference; where the request says to start is not looked at. An object that
    /// does not exist and one that the user may not see are told alike, and nothing is
    /// answered. Not every plug-in answers so.
    MetadataAnswer metadataAt(Visit const& visit, I18NString const& idOrReference,
                              KRLIDOM_Document const& request, ActionLimits const& limits);
    /// The observer is told and nothing is built.
    CallEnd explainTreeAt(Visit const& visit, I18NString const& idOrReference,
                          KRLIDOM_Document const& request, VexTreeObserver& observer,
                          ActionLimits const& limits);
    /// @}

    /// Which objects are accessible. Mode 1 leaves the views' lists of included
    /// objects out of account.
    AccessAnswer access(Visit const& visit, Vex_Handle_Collection const& objects, long mode,
                        ActionLimits const& limits);

    /// Why objects are accessible or not. Not every plug-in tells.
    AccessReasons explainAccess(Visit const& visit, Vex_Handle_Collection const& objects,
                                bool skipViewLists, ActionLimits const& limits);

    /// Tells the observer how a metadata request is answered, object by object; the
    /// answer is not built. Not every plug-in tells.
    CallEnd explainTree(Visit const& visit, KRLIDOM_Document const& request,
                        VexTreeObserver& observer, ActionLimits const& limits);

    SessionPool const& sessions() const { return m_sessions; }

private:
    /// An object that a caller names.
    struct NamedObject {
        CallEnd end; // answered when there is one that the user may see
        VEX_HANDLE object;
    };
    NamedObject findNamed(Visit const& visit, I18NString const& idOrReference,
                          ActionLimits const& limits);
    CallEnd answerAt(Visit const& visit, I18NString const& idOrReference,
                     KRLIDOM_Document const& request, KRLIDOM_Node* response,
                     VexTreeObserver* observer, ActionLimits const& limits);

    std::shared_ptr<PluginProxy> m_plugin;
    SessionPool m_sessions;
};

} // namespace vex
