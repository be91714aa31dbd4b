#pragma once

#include "KRLPluginCreator.h"
#include "VexPlatformVersion.h"
#include "VexPluginExtension.h"
#include "VexPluginFactory.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include <dlfcn.h>

/// Loads a plug-in library and makes the plug-in of that name; unloads it at the
/// end.
class LoadedPlugin {
public:
    LoadedPlugin(std::string const& file, std::string const& name)
        : m_file(std::filesystem::absolute(file)) {
        VexPluginFactory& factory = *VexPluginFactory_getInstance();
        factory.SetCurrentLibrary(m_file); // loading registers the creator
        m_library.reset(dlopen(m_file.c_str(), RTLD_NOW | RTLD_LOCAL));
        factory.SetCurrentLibrary("");
        if (m_library == nullptr) {
            throw std::runtime_error(dlerror());
        }
        auto const version =
            reinterpret_cast<int (*)()>(dlsym(m_library.get(), "VexPlugin_platformVersion"));
        VexPluginFactory::Creator const* const creator = factory.FindCreator(name);
        if (version == nullptr || version() != VexPlatform_version() || creator == nullptr) {
            throw std::runtime_error(m_file + " holds no " + name + " for this platform");
        }
        m_plugin.reset(creator->create());
        m_plugin->Initialize("");
    }
    ~LoadedPlugin() {
        if (m_plugin != nullptr) {
            m_plugin->Terminate("");
            m_plugin.reset(); // before the library that holds its code
        }
        VexPluginFactory_getInstance()->ForgetLibrary(m_file);
    }
    LoadedPlugin(LoadedPlugin const&) = delete;
    LoadedPlugin& operator=(LoadedPlugin const&) = delete;

    VexPluginInterface* operator->() const { return m_plugin.get(); }

    /// Null when the plug-in does not offer it.
    template <class Extension> Extension const* findExtension() const {
        auto const entry =
            reinterpret_cast<VexGetExtension>(dlsym(m_library.get(), VexGetExtensionName));
        return entry == nullptr ? nullptr : static_cast<Extension const*>(entry(Extension::Id));
    }

private:
    struct Close {
        void operator()(void* library) const { dlclose(library); }
    };
    std::string m_file;
    std::unique_ptr<void, Close> m_library;
    std::unique_ptr<VexPluginInterface> m_plugin;
};
