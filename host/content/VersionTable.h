#pragma once

#include "host/content/ModelVersion.h"

#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace vex {

/// The newest version of each model. Threads: any.
class VersionTable {
public:
    /// Null when none is kept for the path.
    std::shared_ptr<ModelVersion const> find(I18NString const& path) const;

    /// Keeps the version in the place of the one before, which learns of it.
    std::shared_ptr<ModelVersion const> keep(std::shared_ptr<ModelVersion> version);

    /// Those that a version is kept for, ascending.
    std::vector<I18NString> paths() const;

private:
    mutable std::mutex m_mutex;
    std::map<I18NString, std::shared_ptr<ModelVersion>> m_versions;
};

} // namespace vex
