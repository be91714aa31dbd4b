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
        NotHandled, // the plug-in gave `code`, as for an action that it does not know
        Raised,     // the plug-in raised `failure`
        Stopped,    // a limit of the host, or a broken rule
        Unknown,    // an object that is asked for does not exist, or the user may not see it
    };

    Kind kind = Kind::Stopped;
    long code = 0;
    std::optional<CallFailure> failure{};
    std::string text{}; // for people, unless answered
    /// Stopped before the plug-in was called, which lacks the extension that it takes.
    bool lacksExtension = false;

    bool isAnswered() const { return kind == Kind::Answered; }
    /// True when the plug-in answered or refused. Else nothing is known of who asked.
    bool isDecided() const { return isAnswered() || kind == Kind::Raised; }
};

} // namespace vex
