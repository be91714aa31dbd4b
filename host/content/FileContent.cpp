#include "host/content/FileContent.h"

#include "host/catalogue/PolicyViews.h"
#include "host/content/UnknownName.h"

#include <cinttypes>
#include <cstdio>
#include <optional>

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

std::string stampOf(Policy const& policy) {
    char text[32];
    std::snprintf(text, sizeof text, "-%" PRIx64, policy.fingerprint);
    return text;
}

} // namespace

FileContent::FileContent(std::shared_ptr<Catalogue const> catalogue, LoadOptions options,
                         bool keepPolicyTraces, std::shared_ptr<ImageCache> cache)
    : m_catalogue(std::move(catalogue)), m_options(std::move(options)),
      m_keepPolicyTraces(keepPolicyTraces), m_cache(std::move(cache)) {}

FileContent::FileContent(I18NString path, std::string file, LoadOptions options,
                         std::shared_ptr<ImageCache> cache)
    : m_path(std::move(path)), m_file(std::move(file)), m_options(std::move(options)),
      m_cache(std::move(cache)) {}

std::shared_ptr<ModelVersion const> FileContent::getModel(I18NString const& path) {
    if (auto version = m_versions.find(path)) {
        return version;
    }
    Source const source = sourceOf(path);
    std::lock_guard const loading(m_loading);
    auto version = m_versions.find(path); // loaded by whoever held the lock
    return version ? version : load(path, source);
}

std::shared_ptr<ModelVersion const> FileContent::reloadModel(I18NString const& path) {
    Source const source = sourceOf(path);
    std::lock_guard const loading(m_loading);
    return load(path, source);
}

FileContent::Source FileContent::sourceOf(I18NString const& path) const {
    std::vector<I18NString> known;
    if (m_catalogue == nullptr) {
        if (path == m_path) {
            return {m_file, nullptr};
        }
        known.push_back(m_path);
    } else {
        if (CatalogueModel const* const entry = m_catalogue->findModel(path)) {
            return {entry->file, entry->policy};
        }
        for (CatalogueModel const& model : m_catalogue->models) {
            known.push_back(model.path);
        }
    }
    refuseUnknownName("model path", path, known);
}

std::shared_ptr<ModelVersion const> FileContent::load(I18NString const& path,
                                                      Source const& source) {
    // Before the file is read: a change meanwhile shows at the next reading.
    std::string stamp = stampOf(source.file);
    LoadOptions options = m_options;
    std::optional<PolicyViews> views;
    std::shared_ptr<PolicyTrace> trace;
    if (source.policy != nullptr) {
        if (m_keepPolicyTraces) {
            trace = std::make_shared<PolicyTrace>();
            trace->policy = source.policy;
        }
        options.addition = &views.emplace(*source.policy, trace.get());
        stamp += stampOf(*source.policy);
    }
    // A trace comes of applying the policy, which an image holds only the result of.
    std::shared_ptr<Model const> model =
        m_cache == nullptr || trace != nullptr
            ? loadModel(source.file, options)
            : m_cache->load(source.file, options, views ? "policy" + stampOf(*source.policy) : "");
    return m_versions.keep(
        std::make_shared<ModelVersion>(path, std::move(stamp), std::move(model), std::move(trace)));
}

} // namespace vex
