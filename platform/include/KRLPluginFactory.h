#pragma once

#include "VexPluginFactory.h"

#include <string>

template <class Interface> class KRLPluginCreatorBase;

/// The factory as a plug-in's static initialisers see it.
template <class Key, class Interface> class KRLPluginFactory;

/// The factory of `VexPluginInterface`, the only kind of plug-in that there is.
template <> class KRLPluginFactory<std::string, VexPluginInterface> {
public:
    /// The factory behind it, one for the process.
    static VexPluginFactory& getInstance() { return *VexPluginFactory_getInstance(); }

    /// The name of the library that is being loaded on this thread.
    static std::string getCurrentLibrary() { return getInstance().GetCurrentLibrary(); }

    /// The creator stays the caller's and must live until its library is
    /// unloaded.
    static void registerCreator(std::string const& name,
                                KRLPluginCreatorBase<VexPluginInterface>* creator) {
        getInstance().RegisterCreator(name, creator);
    }
};
