#include "host/service/LastingException.h"

#include "KRLException.h"

#include <exception>
#include <typeinfo>

#include <cxxabi.h>
#include <dlfcn.h>

namespace vex {

namespace {

/// Where the library that holds the address begins; null for none.
void const* libraryOf(void const* address) {
    Dl_info found{};
    return ::dladdr(address, &found) == 0 ? nullptr : found.dli_fbase;
}

// Every plug-in exports its version, or it would not be loaded.
bool isOfPlugin(PluginLibrary const& library, std::type_info const* type) {
    return type != nullptr &&
           libraryOf(type) == libraryOf(library.findExport("VexPlugin_platformVersion"));
}

} // namespace

void raiseLasting(PluginLibrary const& library, std::string const& what) {
    if (!isOfPlugin(library, abi::__cxa_current_exception_type())) {
        throw;
    }
    try {
        throw;
    } catch (std::exception const& problem) {
        throw KRLException(problem.what());
    } catch (...) {
        throw KRLException(what + " raised something of a type that only the plug-in knows");
    }
}

} // namespace vex
