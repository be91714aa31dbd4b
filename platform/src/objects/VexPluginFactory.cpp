#include "VexPluginFactory.h"

#include "KRLPluginCreator.h"

namespace {

thread_local std::string currentLibrary;

} // namespace

std::string VexPluginFactory::GetCurrentLibrary() const {
    return currentLibrary;
}

void VexPluginFactory::SetCurrentLibrary(std::string const& library) {
    currentLibrary = library;
}

bool VexPluginFactory::RegisterCreator(std::string const& name, Creator* creator) {
    std::lock_guard const lock(m_mutex);
    return m_creators.emplace(name, creator).second;
}

VexPluginFactory::Creator* VexPluginFactory::FindCreator(std::string const& name) const {
    std::lock_guard const lock(m_mutex);
    auto const found = m_creators.find(name);
    return found == m_creators.end() ? nullptr : found->second;
}

std::vector<std::string> VexPluginFactory::ListNames(std::string const& library) const {
    std::lock_guard const lock(m_mutex);
    std::vector<std::string> names;
    for (auto const& [name, creator] : m_creators) {
        if (creator->library() == library) {
            names.push_back(name);
        }
    }
    return names;
}

void VexPluginFactory::ForgetLibrary(std::string const& library) {
    std::lock_guard const lock(m_mutex);
    std::erase_if(m_creators,
                  [&](auto const& entry) { return entry.second->library() == library; });
}

VexPluginFactory* VexPluginFactory_getInstance() {
    // Never destroyed: libraries are unloaded after other static objects.
    static VexPluginFactory* const factory = new VexPluginFactory;
    return factory;
}
