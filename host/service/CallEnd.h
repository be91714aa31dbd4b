#pragma once

#include "VexException.h"

#include <optional>
#include <string>
#include <vector>

namespace vex {

/// A failure that a plug-in raised.
struct CallFailure {
    unsigned id = 0;
    std::string source;
    int line = 0;
    std::string function;
    std::vector<std::string> parameters; // of all its messages, in their order; UTF-8
    std::string text;                    // for people
};

CallFailure describeFailure(VexException const& raised);

/// How a call of the service ended.
struct CallEnd {
    enum class Kind {
        Answered,
        NotHandled, // the plug-in does not know the action: it gave `code`
        Raised,     // the plug-in raised `failure`
        Stopped,    // a limit of the host, or a broken rule
        Unknown,    // an object that is asked for does not exist, or the user may not see it
    };

    Kind kind = Kind::Stopped;
    long code = 0;
    std::optional<CallFailure> failure{};
    std::string text{}; // for people, unless answered

    bool isAnswered() const { return kind == Kind::Answered; }
};

} // namespace vex
