#pragma once

#include "host/content/ContentStore.h"
#include "host/content/VersionTable.h"

#include <atomic>

namespace vex {

/// Models that were loaded already, whatever from.
class MemoryContent final : public ContentStore {
public:
    explicit MemoryContent(std::shared_ptr<Catalogue const> catalogue = nullptr)
        : m_catalogue(std::move(catalogue)) {}

    /// Makes this the newest version of the model at `path`.
    std::shared_ptr<ModelVersion const> setModel(I18NString const& path,
                                                 std::shared_ptr<Model const> model);

    std::shared_ptr<Catalogue const> getCatalogue() const override { return m_catalogue; }
    std::shared_ptr<ModelVersion const> getModel(I18NString const& path) override;
    /// There is nothing to read: gives what `getModel` does.
    std::shared_ptr<ModelVersion const> reloadModel(I18NString const& path) override {
        return getModel(path);
    }

private:
    std::shared_ptr<Catalogue const> m_catalogue;
    std::atomic<unsigned long> m_count{0};
    VersionTable m_versions;
};

} // namespace vex
