#include "host/content/MemoryContent.h"

#include "host/content/UnknownName.h"

namespace vex {

std::shared_ptr<ModelVersion const> MemoryContent::setModel(I18NString const& path,
                                                            std::shared_ptr<Model const> model) {
    return m_versions.keep(
        std::make_shared<ModelVersion>(path, std::to_string(++m_count), std::move(model)));
}

std::shared_ptr<ModelVersion const> MemoryContent::getModel(I18NString const& path) {
    if (auto version = m_versions.find(path)) {
        return version;
    }
    refuseUnknownName("model path", path, m_versions.paths());
}

} // namespace vex
