#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/content/ModelVersion.h"

#include <memory>

namespace vex {

/// Where models come from, and who may see what of them. Threads: any.
class ContentStore {
public:
    ContentStore() = default;
    ContentStore(ContentStore const&) = delete;
    ContentStore& operator=(ContentStore const&) = delete;
    virtual ~ContentStore() = default;

    /// Null when the models stand in none: nobody is restricted.
    virtual std::shared_ptr<Catalogue const> getCatalogue() const = 0;

    /// The newest version of a model, read when it is first asked for. Raises
    /// `HostException` for a path that the store lacks, and what reading the
    /// model raises.
    virtual std::shared_ptr<ModelVersion const> getModel(I18NString const& path) = 0;

    /// Reads a model anew. Whoever holds the version before keeps it; when
    /// reading fails that one stays the newest. Raises as `getModel` does.
    virtual std::shared_ptr<ModelVersion const> reloadModel(I18NString const& path) = 0;
};

} // namespace vex
