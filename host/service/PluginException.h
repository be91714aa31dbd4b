#pragma once

#include "KRLException.h"

#include <string>

namespace vex {

/// What was wrong between the host and a plug-in.
enum class PluginFault {
    NotLoaded,        // no such library, or not a plug-in of that name
    WrongVersion,     // built for another version of the platform
    LoadedTwice,      // the file is loaded already
    NotReady,         // called before Initialize, after Terminate, or Initialize failed
    CallsUnderWay,    // Terminate while a call runs
    SessionBusy,      // a second call of a session while one runs
    ForeignException, // something other than the platform's exceptions came out
    OutOfMemory,
    NotOffered, // an optional operation that the plug-in lacks
};

/// A rule of calling plug-ins was broken; the text names the plug-in, who broke
/// the rule and what to do.
class PluginException final : public KRLException {
public:
    PluginException(PluginFault fault, std::string text)
        : KRLException(std::move(text)), m_fault(fault) {}

    PluginFault getFault() const { return m_fault; }

private:
    PluginFault m_fault;
};

} // namespace vex
