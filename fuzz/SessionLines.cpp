#include "VexAction.h"
#include "fuzz/FuzzSession.h"
#include "fuzz/FuzzTargets.h"
#include "host/protocol/SessionLineCall.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace {

/// What a confined session let through to the plug-in.
void requireOwnPath(vex::HostSession const& session, VexParams const& in) {
    auto const* const path = static_cast<I18NString*>(in[1]);
    if (session.confinement() != nullptr && path != nullptr) {
        fuzz::require(*path == "/content/m" || *path == "path:/content/m",
                      "a confined session asks about its own path");
    }
}

std::string answer(vex::HostSession& session, std::string_view line) {
    return vex::answerSessionLine(
        line, session, {},
        {[&](VexVariant const& action, VexParams const& in) {
             vex::ActionOutcome outcome =
                 vex::callAction(fuzz::plugin(), session, action, in, fuzz::smallLimits());
             auto const code = static_cast<long>(action);
             if (code == VexAction::MetadataRequest || code == VexAction::AccessibilityRequest) {
                 requireOwnPath(session, in);
             }
             return outcome;
         },
         [&](int kind) { fuzz::plugin().Notify(session, kind); }});
}

} // namespace

void fuzz::sessionLines(std::string_view input) {
    constexpr std::size_t most = 20; // lines of one input
    // Every other length, so that each seed has a neighbour of the other kind.
    auto const session =
        openSession(input.size() % 2 == 0 ? vex::SessionPaths::Own : vex::SessionPaths::Any);
    std::size_t lines = 0;
    for (std::size_t at = 0; at < input.size() && lines < most; ++lines) {
        std::size_t const end = std::min(input.find('\n', at), input.size());
        std::string const written = answer(*session, input.substr(at, end - at));
        require(written.find('\n') == std::string::npos, "an answer is one line");
        auto const json = nlohmann::json::parse(written, nullptr, false);
        require(json.is_object(), "an answer is an object");
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
