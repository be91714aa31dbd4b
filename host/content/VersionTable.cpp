#include "host/content/VersionTable.h"

namespace vex {

std::shared_ptr<ModelVersion const> VersionTable::find(I18NString const& path) const {
    std::lock_guard const lock(m_mutex);
    auto const at = m_versions.find(path);
    return at == m_versions.end() ? nullptr : at->second;
}

std::shared_ptr<ModelVersion const> VersionTable::keep(std::shared_ptr<ModelVersion> version) {
    std::shared_ptr<ModelVersion> earlier = version; // let go of after the lock
    std::lock_guard const lock(m_mutex);
    m_versions[version->path()].swap(earlier);
    if (earlier != nullptr) {
        earlier->markReplaced();
    }
    return version;
}

std::vector<I18NString> VersionTable::paths() const {
    std::lock_guard const lock(m_mutex);
    std::vector<I18NString> all;
    for (auto const& [path, version] : m_versions) {
        all.push_back(path);
    }
    return all;
}

} // namespace vex
