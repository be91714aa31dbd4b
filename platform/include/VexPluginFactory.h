#pragma once

#include "VexExport.h"
#include "VexPluginInterface.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

template <class Interface> class KRLPluginCreatorBase;

/// Knows the creators of all loaded plug-in libraries by name. One for the
/// process, see `VexPluginFactory_getInstance`. Threads: any.
class VEX_PLATFORM_API VexPluginFactory {
public:
    /// What plug-ins register and hosts find.
    using Creator = KRLPluginCreatorBase<VexPluginInterface>;

    /// The name of the library that is being loaded on this thread; "" when
    /// none is.
    std::string GetCurrentLibrary() const;
    /// Set by a host around the loading of a library.
    void SetCurrentLibrary(std::string const& library);

    /// A name that is taken keeps its first creator, and false comes back: a
    /// registering static initialiser has nobody to raise to. The host sees it
    /// by the creator's library.
    bool RegisterCreator(std::string const& name, Creator* creator);

    /// The creator of that name; null when no loaded library has one.
    Creator* FindCreator(std::string const& name) const;

    /// The names that a library registered, ascending. A name that another library
    /// had first is not among them.
    std::vector<std::string> ListNames(std::string const& library) const;

    /// Forgets every creator of a library; a host calls it before unloading,
    /// since creators do not unregister.
    void ForgetLibrary(std::string const& library);

private:
    mutable std::mutex m_mutex;
    std::map<std::string, Creator*> m_creators;
};

/// The factory of the process; never null, never destroyed. Threads: any.
extern "C" VEX_PLATFORM_API VexPluginFactory* VexPluginFactory_getInstance();
