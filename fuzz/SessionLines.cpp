#include "apps/vexma/SessionLines.h"

#include "KRLException.h"
#include "fuzz/FuzzSession.h"
#include "fuzz/FuzzTargets.h"

#include <algorithm>

namespace {

vex::Json answer(vex::HostSession& session, std::string_view text) {
    try {
        vex::SessionLine const line = vex::readSessionLine(text, session, {});
        if (line.notify) {
            fuzz::plugin().Notify(session, *line.notify);
            return vex::answerToNotify(*line.notify);
        }
        return vex::answerTo(
            vex::callAction(fuzz::plugin(), session, line.action, line.in, fuzz::smallLimits()));
    } catch (KRLException const& problem) {
        return vex::answerToFailure(problem.what());
    }
}

} // namespace

void fuzz::sessionLines(std::string_view input) {
    constexpr std::size_t most = 20; // lines of one input
    auto const session = openSession();
    std::size_t lines = 0;
    for (std::size_t at = 0; at < input.size() && lines < most; ++lines) {
        std::size_t const end = std::min(input.find('\n', at), input.size());
        vex::Json const json = answer(*session, input.substr(at, end - at));
        std::string const written = json.dump(-1, ' ', false, vex::Json::error_handler_t::replace);
        require(written.find('\n') == std::string::npos, "an answer is one line");
        require(vex::Json::parse(written, nullptr, false).is_object(), "an answer is an object");
        require(json.contains("code") || json.contains("error") || json.contains("notified"),
                "an answer says what came of the line");
        at = end + 1;
    }
    constexpr std::size_t seldom = 16; // inputs of every 16th length ask for more
    vex::ActionOutcome const after =
        input.size() % seldom == 0 ? ask(*session, "<Metadata Depth='1'/>") : check(*session);
    requireSound(after);
    require(after.end != vex::ActionOutcome::End::Stopped, "the session goes on");
    close(*session);
}
