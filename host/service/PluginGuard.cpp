#include "host/service/PluginGuard.h"

#include "host/service/PluginException.h"

#include <new>

#include <xercesc/util/OutOfMemoryException.hpp>

namespace vex {

namespace {

[[noreturn]] void raiseOutOfMemory(std::string const& file, char const* operation) {
    throw PluginException(PluginFault::OutOfMemory,
                          describedCall(file, operation) + " ran out of memory");
}

} // namespace

std::string describedCall(std::string const& file, char const* operation) {
    return "the plug-in " + file + ": " + operation;
}

void raisePluginFault(std::string const& file, char const* operation, PluginRaises raises) {
    try {
        throw;
    } catch (PluginException const&) {
        throw;
    } catch (KRLException const& problem) {
        if (raises == PluginRaises::Platform) {
            throw;
        }
        throw PluginException(PluginFault::ForeignException,
                              describedCall(file, operation) + " failed: " + problem.what());
    } catch (std::bad_alloc const&) {
        raiseOutOfMemory(file, operation);
    } catch (xercesc::OutOfMemoryException const&) { // derives from nothing
        raiseOutOfMemory(file, operation);
    } catch (std::exception const& problem) {
        throw PluginException(
            PluginFault::ForeignException,
            describedCall(file, operation) +
                " raised an exception that plug-ins may not raise: " + problem.what());
    } catch (...) {
        throw PluginException(PluginFault::ForeignException,
                              describedCall(file, operation) +
                                  " raised something that is not an exception of the platform");
    }
}

} // namespace vex
