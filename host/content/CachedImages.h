#pragma once

#include "host/content/CacheFolder.h"
#include "host/content/FileState.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace vex {

/// The name under which a cache keeps the image of a document: of its path and its state, of
/// what else the image depends on, and of the build that made it. Another state has
/// another name, so what was kept of it is not found again.
class ImageName {
public:
    /// `kind` tells apart the images that one document can have.
    ImageName(std::string const& documentPath, FileState const& state, std::string const& kind);

    std::string const& text() const { return m_text; }
    /// Whether the name is that of the same document in another state.
    bool isSuccessorOf(std::string const& other) const;

private:
    std::size_t m_pathLength;
    std::size_t m_stateLength; // with the path
    std::string m_text;
};

struct CachedImage {
    std::string document; // its path; "" when that was lost
    std::uint64_t bytes;
    std::chrono::system_clock::time_point used;
};

/// Used last first.
std::vector<CachedImage> listImages(CacheFolder const& folder);

/// Gives the images that were there.
std::vector<CachedImage> clearImages(CacheFolder const& folder);

/// Drops an image, and what is known of its document.
void dropImage(CacheFolder const& folder, std::string const& name);

/// Puts an image in its place that was written under another name, says which document it is of,
/// and drops those that it replaces. Under the folder's lock.
bool placeImage(CacheFolder const& folder, std::string const& written, ImageName const& name,
                std::string const& documentPath);

/// Drops the images that were not used for longest until the rest takes so much at most, and
/// what was never finished. Under the folder's lock.
void boundImages(CacheFolder const& folder, std::uint64_t mostBytes);

/// The name of an image that is being written, and a part of those that it has before.
extern char const* const UnfinishedImageName;

} // namespace vex
