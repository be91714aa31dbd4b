#pragma once

#include <string>

namespace vex {

/// What the thread does in a plug-in, while it does it: for whoever has to say which
/// plug-in it was that ended the process there.
class PluginCall {
public:
    /// Both texts outlive the call.
    PluginCall(std::string const& file, char const* operation);
    PluginCall(PluginCall const&) = delete;
    PluginCall& operator=(PluginCall const&) = delete;
    ~PluginCall();

    /// The innermost one of this thread; null without one. Handlers of signals may ask,
    /// and those of the process's end.
    static PluginCall const* current();

    char const* file() const { return m_file; }
    /// "DoAction", "the loading".
    char const* operation() const { return m_operation; }

private:
    char const* m_file;
    char const* m_operation;
    PluginCall const* m_outer;
};

} // namespace vex
