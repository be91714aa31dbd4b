#include "host/content/FileContent.h"

#include "host/content/UnknownName.h"

#include <cinttypes>
#include <cstdio>

#include <sys/stat.h>

namespace vex {

namespace {

/// Changes whenever the file does: with its time, its length and its place on
/// the disk. "" for a file that is not there.
std::string stampOf(std::string const& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        return {};
    }
    constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
    char text[64];
    std::snprintf(text, sizeof text, "%" PRIx64 "-%" PRIx64 "-%" PRIx64,
                  static_cast<std::uint64_t>(status.st_mtim.tv_sec * nanosecondsPerSecond +
                                             status.st_mtim.tv_nsec),
                  static_cast<std::uint64_t>(status.st_size),
                  static_cast<std::uint64_t>(status.st_ino));
    return text;
}

} // namespace

FileContent::FileContent(std::shared_ptr<Catalogue const> catalogue, LoadOptions options)
    : m_catalogue(std::move(catalogue)), m_options(std::move(options)) {}

FileContent::FileContent(I18NString path, std::string file, LoadOptions options)
    : m_path(std::move(path)), m_file(std::move(file)), m_options(std::move(options)) {}

std::shared_ptr<ModelVersion const> FileContent::getModel(I18NString const& path) {
    if (auto version = m_versions.find(path)) {
        return version;
    }
    std::string const& file = fileOf(path);
    std::lock_guard const loading(m_loading);
    auto version = m_versions.find(path); // loaded by whoever held the lock
    return version ? version : load(path, file);
}

std::shared_ptr<ModelVersion const> FileContent::reloadModel(I18NString const& path) {
    std::string const& file = fileOf(path);
    std::lock_guard const loading(m_loading);
    return load(path, file);
}

std::string const& FileContent::fileOf(I18NString const& path) const {
    std::vector<I18NString> known;
    if (m_catalogue == nullptr) {
        if (path == m_path) {
            return m_file;
        }
        known.push_back(m_path);
    } else {
        if (CatalogueModel const* const entry = m_catalogue->findModel(path)) {
            return entry->file;
        }
        for (CatalogueModel const& model : m_catalogue->models) {
            known.push_back(model.path);
        }
    }
    refuseUnknownName("model path", path, known);
}

std::shared_ptr<ModelVersion const> FileContent::load(I18NString const& path,
                                                      std::string const& file) {
    // Before the file is read: a change meanwhile shows at the next reading.
    std::string stamp = stampOf(file);
    return m_versions.keep(
        std::make_shared<ModelVersion>(path, std::move(stamp), loadModel(file, m_options)));
}

} // namespace vex
