#include "host/content/CachedImages.h"

#include "host/content/BuildName.h"
#include "host/store/image/ImageFile.h"

#include <algorithm>
#include <cctype>
#include <cinttypes>
#include <cstdio>
#include <string_view>

namespace vex {

char const* const UnfinishedImageName = "unfinished";

namespace {

constexpr std::string_view ImageEnding = ".vexm";
constexpr std::string_view DocumentEnding = ".of"; // a link that names the document

/// Short; two paths that are alike here differ by their states.
std::string shortOf(std::string_view path) {
    constexpr std::uint64_t prime = 0x100'0000'01B3;
    std::uint64_t hash = 0xCBF2'9CE4'8422'2325;
    for (char const each : path) {
        hash = (hash ^ static_cast<unsigned char>(each)) * prime;
    }
    char text[20];
    std::snprintf(text, sizeof text, "%016" PRIx64, hash);
    return text;
}

std::string asNameOfAFile(std::string text) {
    std::replace_if(
        text.begin(), text.end(),
        [](unsigned char each) {
            return std::isalnum(each) == 0 && each != '-' && each != '.' && each != '_';
        },
        '_');
    return text;
}

std::string linkOf(std::string_view image) {
    image.remove_suffix(ImageEnding.size());
    return std::string(image) + std::string(DocumentEnding);
}

bool isImageName(std::string_view name) {
    return name.ends_with(ImageEnding);
}

std::vector<CacheFolder::File> imagesIn(CacheFolder const& folder) {
    std::vector<CacheFolder::File> found = folder.files();
    std::erase_if(found, [](auto const& each) { return !isImageName(each.name); });
    return found;
}

} // namespace

ImageName::ImageName(std::string const& documentPath, FileState const& state,
                     std::string const& kind) {
    m_text = shortOf(documentPath) + '-';
    m_pathLength = m_text.size();
    m_text += state.text() + '-';
    m_stateLength = m_text.size();
    m_text += asNameOfAFile(imageFormatName() + '-' + buildName() + '-' + kind) +
              std::string(ImageEnding);
}

bool ImageName::isSuccessorOf(std::string const& other) const {
    return other.compare(0, m_pathLength, m_text, 0, m_pathLength) == 0 &&
           other.compare(0, m_stateLength, m_text, 0, m_stateLength) != 0;
}

std::vector<CachedImage> listImages(CacheFolder const& folder) {
    std::vector<CachedImage> images;
    for (CacheFolder::File const& each : imagesIn(folder)) {
        images.push_back({folder.readLink(linkOf(each.name)), each.bytes, each.used});
    }
    return images;
}

std::vector<CachedImage> clearImages(CacheFolder const& folder) {
    std::vector<CachedImage> images;
    for (CacheFolder::File const& each : imagesIn(folder)) {
        std::string const document = folder.readLink(linkOf(each.name));
        if (folder.remove(each.name)) {
            folder.remove(linkOf(each.name));
            images.push_back({document, each.bytes, each.used});
        }
    }
    return images;
}

void dropImage(CacheFolder const& folder, std::string const& name) {
    folder.remove(name);
    folder.remove(linkOf(name));
}

bool placeImage(CacheFolder const& folder, std::string const& written, ImageName const& name,
                std::string const& documentPath) {
    folder.remove(linkOf(name.text()));
    if (!folder.link(linkOf(name.text()), documentPath) || !folder.put(written, name.text())) {
        folder.remove(written);
        dropImage(folder, name.text());
        return false;
    }
    folder.use(name.text());
    for (CacheFolder::File const& each : imagesIn(folder)) {
        if (name.isSuccessorOf(each.name)) {
            dropImage(folder, each.name);
        }
    }
    return true;
}

void boundImages(CacheFolder const& folder, std::uint64_t mostBytes) {
    std::uint64_t bytes = 0;
    for (CacheFolder::File const& each : imagesIn(folder)) {
        bytes += each.bytes;
        if (bytes > mostBytes) {
            bytes -= each.bytes; // a smaller one that was used before may stay
            dropImage(folder, each.name);
        }
    }
    for (std::string const& name : folder.names()) {
        bool const isLost = name.ends_with(DocumentEnding) &&
                            !folder.has(name.substr(0, name.size() - DocumentEnding.size()) +
                                        std::string(ImageEnding));
        if (isLost || name.find(UnfinishedImageName) != std::string::npos) {
            folder.remove(name);
        }
    }
}

} // namespace vex
