#pragma once

#include "host/content/ContentStore.h"
#include "host/content/ImageCache.h"
#include "host/content/VersionTable.h"
#include "host/import/xml/ModelLoader.h"

#include <mutex>
#include <string>

namespace vex {

/// Models in files: those of a catalogue, or one alone. A version's stamp is
/// that of its file and of its policy, so it outlives the process.
class FileContent final : public ContentStore {
public:
    /// Without a cache every document is read.
    explicit FileContent(std::shared_ptr<Catalogue const> catalogue, LoadOptions options = {},
                         bool keepPolicyTraces = false,
                         std::shared_ptr<ImageCache> cache = nullptr);
    /// One file, which is found under `path`.
    FileContent(I18NString path, std::string file, LoadOptions options = {},
                std::shared_ptr<ImageCache> cache = nullptr);

    std::shared_ptr<Catalogue const> getCatalogue() const override { return m_catalogue; }
    std::shared_ptr<ModelVersion const> getModel(I18NString const& path) override;
    std::shared_ptr<ModelVersion const> reloadModel(I18NString const& path) override;

private:
    /// What a path names. No policy: null.
    struct Source {
        std::string const& file;
        std::shared_ptr<Policy const> policy;
    };
    Source sourceOf(I18NString const& path) const;
    std::shared_ptr<ModelVersion const> load(I18NString const& path, Source const& source);

    std::shared_ptr<Catalogue const> m_catalogue;
    I18NString m_path; // of the file that stands alone
    std::string m_file;
    LoadOptions m_options;
    bool m_keepPolicyTraces = false;
    std::shared_ptr<ImageCache> m_cache;
    std::mutex m_loading; // one model is read at a time; loaded ones stay reachable meanwhile
    VersionTable m_versions;
};

} // namespace vex
