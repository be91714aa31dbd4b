#pragma once

#include "VexPluginFactory.h"

#include <memory>
#include <string>
#include <utility>

#include <sys/types.h>

namespace vex {

/// Where the plug-in library stands when nobody names one: beside the running
/// program as in a build, else where an installation puts it. Never the current
/// directory. Raises `PluginException` when it stands in neither place.
std::string findPluginFile();

/// A loaded plug-in library. Its file is loaded once in a process; a second
/// load is refused. Unloading comes last: every object made from it must be
/// gone by then.
class PluginLibrary {
public:
    /// Raises `PluginException` when the file cannot be loaded, was built for
    /// another version of the platform or is loaded already. What the library raises
    /// while it is loaded leaves it in the process for good, and the system's loader
    /// taken for other threads: only this one can load and unload libraries from then on.
    explicit PluginLibrary(std::string const& file);
    ~PluginLibrary();
    PluginLibrary(PluginLibrary const&) = delete;
    PluginLibrary& operator=(PluginLibrary const&) = delete;

    /// The absolute path.
    std::string const& getFile() const { return m_file; }

    /// The creator that this library registered under `name`; of the empty name, the
    /// metadata access plug-in's, else the only one that there is. Raises
    /// `PluginException` when it registered none, or several to choose among.
    VexPluginFactory::Creator& findCreator(std::string const& name) const;

    /// The address that this library exports under `name`; null when it does
    /// not.
    void* findExport(char const* name) const;

private:
    using FileIdentity = std::pair<dev_t, ino_t>;
    struct Claim;

    void load();
    void unload();
    void checkVersion() const;
    std::string chooseName() const;

    std::string m_file;
    std::unique_ptr<Claim> m_claim;
    std::unique_ptr<void, int (*)(void*)> m_handle; // null after `unload`
};

} // namespace vex
