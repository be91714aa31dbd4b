#pragma once

#include "host/service/PluginLibrary.h"

#include <string>

/// Raises what is being handled anew, so that it can be caught when the plug-in is
/// unloaded: of a type of the plug-in's own it becomes a `KRLException` of the same text.
/// Whatever else it is, it passes as it is: what the platform, the standard library and
/// the host itself raise. `what` says what was called, for what has no text.
[[noreturn]] void VexRaiseForHost(vex::PluginLibrary const& library, std::string const& what);

/// Runs a call into a plug-in of that library. What it raises often unloads the plug-in
/// on its way out, and the code of the plug-in's own types is gone with it.
template <class Call>
auto VexPluginCall(vex::PluginLibrary const& library, char const* operation, Call const& call) {
    try {
        return call();
    } catch (...) {
        VexRaiseForHost(library, "the plug-in " + library.getFile() + ": " + operation);
    }
}
