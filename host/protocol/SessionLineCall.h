#pragma once

#include "KRLIDOM_Reader.h"
#include "host/protocol/SessionLine.h"
#include "host/protocol/SessionReply.h"
#include "host/service/ActionCall.h"

#include <functional>
#include <string>
#include <string_view>

namespace vex {

/// How the lines of a session reach its plug-in. `action` and `notify` may raise what
/// calling a plug-in raises.
struct SessionCalls {
    std::function<ActionOutcome(VexVariant const& action, VexParams const& in)> action;
    std::function<void(int kind)> notify;
    /// Reads the model anew and lets the session go over to it, before the plug-in hears
    /// of it. Raises what reading raises; the session keeps the model it has then. None
    /// where a model cannot change.
    std::function<void()> reload{};
};

/// What a line may hold.
struct SessionLineLimits {
    KRLIDOM_ReadLimits document{}; ///< each of its documents; its bytes: all together
    std::size_t values = mostValuesOfALine;
    static constexpr std::size_t MostNodes = 100; ///< an action takes one or two
};

/// Does what a line says. The values are made in the order of the line; the
/// first that cannot be (it is unusable, its handle names nothing, its document
/// cannot be read within `limits`) is the reply, and nothing is called. Of the
/// platform's exceptions none comes out.
SessionReply carryOut(SessionLine const& line, HostSession const& session,
                      SessionLineLimits const& limits, SessionCalls const& calls);

/// Reads a line, carries it out and writes the reply, all as text. When memory runs out
/// or the call's `Budget` ends it, the reply says so.
std::string answerSessionLine(std::string_view line, HostSession const& session,
                              SessionLineLimits const& limits, SessionCalls const& calls);

} // namespace vex
