#pragma once

#include "KRLIDOM_Reader.h"
#include "host/service/ActionCall.h"

#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace vex {

using Json = nlohmann::ordered_json;

/// One line that a client sends to a session: an action to call, or an event.
struct SessionLine {
    std::optional<int> notify;
    VexVariant action; // unless `notify`
    VexParams in;
    ActionValues values; // what the two point to
};

/// Reads a line. Raises `HostException` or `KRLDocumentException` when it
/// cannot be used.
SessionLine readSessionLine(std::string_view text, HostSession const& session,
                            KRLIDOM_ReadLimits const& limits);

/// The answer to an action, to an event, and to a line that could not be used.
Json answerTo(ActionOutcome const& outcome);
Json answerToNotify(int kind);
Json answerToFailure(std::string const& text);

} // namespace vex
