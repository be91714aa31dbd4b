#pragma once

#include "host/service/PluginCall.h"

#include <string>

namespace vex {

/// What may come out of a plug-in, `PluginException` aside.
enum class PluginRaises {
    Platform, // its exceptions: those of an answer
    Nothing,  // while it is loaded, made, ended
};

/// "the plug-in FILE: OPERATION".
std::string describedCall(std::string const& file, char const* operation);

/// To be called in a handler: raises a `PluginException` in place of what was caught there,
/// or that itself when it may come out.
[[noreturn]] void raisePluginFault(std::string const& file, char const* operation,
                                   PluginRaises raises);

/// Calls into a plug-in. Every kind of exception is caught here, and only here: what is not
/// the platform's own must not travel on as if the host had raised it.
template <class Call>
auto guardedCall(std::string const& file, char const* operation, PluginRaises raises,
                 Call const& call) {
    PluginCall const underWay(file, operation);
    try {
        return call();
    } catch (...) {
        raisePluginFault(file, operation, raises);
    }
}

} // namespace vex
