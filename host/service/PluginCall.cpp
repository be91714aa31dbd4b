#include "host/service/PluginCall.h"

namespace vex {

namespace {

// Nothing is to be destroyed, so that it is still there when the process ends.
constinit thread_local PluginCall const* innermost = nullptr;

} // namespace

PluginCall::PluginCall(std::string const& file, char const* operation)
    : m_file(file.c_str()), m_operation(operation), m_outer(innermost) {
    innermost = this;
}

PluginCall::~PluginCall() {
    innermost = m_outer;
}

PluginCall const* PluginCall::current() {
    return innermost;
}

} // namespace vex
