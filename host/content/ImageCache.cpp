#include "host/content/ImageCache.h"

#include "KRLException.h"
#include "host/store/image/ImageFile.h"

#include <array>
#include <filesystem>
#include <new>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vex {

namespace {

/// Nothing for what cannot be read, and for images.
std::optional<FileState> stateOfDocument(std::string const& file) {
    if (!FileState::of(file)) {
        return std::nullopt; // a pipe is not opened: it can be read only once
    }
    int const opened = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (opened < 0) {
        return std::nullopt;
    }
    constexpr std::size_t enoughToTell = 64;
    std::array<char, enoughToTell> first{};
    struct stat status {};
    bool const isRegular = ::fstat(opened, &status) == 0 && S_ISREG(status.st_mode);
    ssize_t const length = ::pread(opened, first.data(), first.size(), 0);
    ::close(opened);
    if (!isRegular || length < 0 ||
        isImage(std::string_view(first.data(), static_cast<std::size_t>(length)))) {
        return std::nullopt;
    }
    return FileState(status);
}

/// An image knows nothing of limits: those that it was made under must be the usual ones.
bool areUsual(DocumentLimits const& limits) {
    DocumentLimits const usual;
    return limits.depth == usual.depth && limits.nameLength == usual.nameLength &&
           limits.distinctNames == usual.distinctNames &&
           limits.attributesPerElement == usual.attributesPerElement;
}

} // namespace

std::shared_ptr<Model const> ImageCache::load(std::string const& file, LoadOptions const& options,
                                              std::string const& additionName) {
    std::optional<FileState> const state = stateOfDocument(file);
    bool const isKnown = options.addition == nullptr || !additionName.empty();
    if (!state || !isKnown || !areUsual(options.limits) ||
        state->bytes() < m_options.leastDocument || state->bytes() > options.input.bytes) {
        return loadModel(file, options);
    }
    auto const now = std::chrono::system_clock::now();
    std::error_code none; // a folder that is gone has no name, but the file was found
    std::string const path = std::filesystem::absolute(file, none).lexically_normal().string();
    ImageName const name(path, *state,
                         (options.keepPositions ? "placed" : "plain") +
                             (additionName.empty() ? "" : '-' + additionName));
    if (auto opened = open(path, name)) {
        return opened;
    }
    std::shared_ptr<Model const> model = loadModel(file, options);
    if (FileState::of(file) != state) {
        note(path, "it changed while it was read, so no image is kept");
    } else if (!state->isSettled(now, m_options.settled)) {
        note(path, "it changed a moment ago, and may change again without a trace, so no image is "
                   "kept yet");
    } else {
        keep(model, name, path);
    }
    return model;
}

std::shared_ptr<Model const> ImageCache::open(std::string const& file, ImageName const& name) {
    std::string problem;
    std::optional<CacheFolder> const folder = CacheFolder::open(m_options.folder, problem);
    if (!problem.empty()) {
        note(file, std::move(problem));
    }
    if (!folder || !folder->has(name.text())) {
        return nullptr;
    }
    try {
        std::shared_ptr<Model const> model =
            openImage(folder->pathTo(name.text()), {.bytes = m_options.mostBytes});
        folder->use(name.text());
        return model;
    } catch (KRLDocumentException const& refused) {
        note(file, "its image was thrown away: " + refused.GetProblem());
        dropImage(*folder, name.text());
        return nullptr;
    }
}

void ImageCache::keep(std::shared_ptr<Model const> const& model, ImageName const& name,
                      std::string const& file) {
    std::lock_guard const guard(m_mutex);
    try {
        m_queue.write(model, name, file);
    } catch (std::bad_alloc const&) { // no reason to do without the model
    }
}

void ImageCache::note(std::string const& file, std::string reason) {
    std::lock_guard const guard(m_mutex);
    m_notes.insert_or_assign(file, std::move(reason));
}

std::map<std::string, std::string> ImageCache::finish() {
    std::lock_guard const guard(m_mutex);
    std::map<std::string, std::string> notes = m_queue.finish();
    notes.merge(std::exchange(m_notes, {}));
    return notes;
}

} // namespace vex
