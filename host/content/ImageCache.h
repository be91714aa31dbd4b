#pragma once

#include "host/content/ImageQueue.h"
#include "host/import/xml/ModelLoader.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace vex {

struct ImageCacheOptions {
    std::string folder;                                         // made when it is first needed
    std::uint64_t mostBytes = 1U << 30U;                        // that all images take
    std::uint64_t leastDocument = 1U << 20U;                    // smaller ones are read as quickly
    std::chrono::nanoseconds settled = std::chrono::seconds(2); // see FileState::isSettled
};

/// Model documents that were read once, as images: the next process opens them in place of
/// reading. An image is found again by the path of the document and its state, for the same
/// build, and answers as the document does; whatever is wrong with the cache or an image
/// in it, the document is read. Threads: any.
class ImageCache {
public:
    explicit ImageCache(ImageCacheOptions options)
        : m_options(std::move(options)), m_queue(m_options.folder, m_options.mostBytes) {}

    /// As `loadModel`. The image of a document that is not there yet is written meanwhile.
    /// An addition needs a name: the same one for what adds the same.
    std::shared_ptr<Model const> load(std::string const& file, LoadOptions const& options,
                                      std::string const& additionName = "");

    /// Waits until every image is written; gives what stood in the way since the last time:
    /// files and reasons.
    std::map<std::string, std::string> finish();

private:
    std::shared_ptr<Model const> open(std::string const& file, ImageName const& name);
    void keep(std::shared_ptr<Model const> const& model, ImageName const& name,
              std::string const& file);
    void note(std::string const& file, std::string reason);

    ImageCacheOptions const m_options;
    std::mutex m_mutex; // of what follows
    ImageQueue m_queue;
    std::map<std::string, std::string> m_notes; // the last of each file
};

} // namespace vex
