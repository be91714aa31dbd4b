#pragma once

#include "host/protocol/SessionLine.h"
#include "host/service/CallEnd.h"

#include <string>
#include <variant>
#include <vector>

namespace vex {

/// The action came back.
struct ReturnedReply {
    long code = 0;
    std::vector<SessionValue> appended;
    std::string response; // XML, as far as it was written; so in the next two
};

/// The plug-in raised.
struct RaisedReply {
    CallFailure failure;
    std::string response;
};

/// A limit of the host ended the call.
struct StoppedReply {
    std::string text;
    std::string response;
};

/// The notification was sent.
struct NotifiedReply {
    int kind = 0;
    std::string problem{}; // that kept a new version of the model from being read
};

/// The line could not be used.
struct UnusedReply {
    std::string text;
};

/// What a session says to one line. Texts are UTF-8.
using SessionReply =
    std::variant<ReturnedReply, RaisedReply, StoppedReply, NotifiedReply, UnusedReply>;

/// The reply as one JSON object on one line, without the line break. A response
/// is moved into it, since it may be large. `id` is JSON that the object begins with,
/// under "id"; "" for none.
std::string toJson(SessionReply reply, std::string const& id = {});

} // namespace vex
