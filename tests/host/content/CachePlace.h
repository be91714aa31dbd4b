#pragma once

#include "host/content/ImageCache.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// A folder with a place for a cache, and model documents.
class CachePlace {
public:
    CachePlace() {
        std::string pattern = (std::filesystem::temp_directory_path() / "cacheXXXXXX").string();
        m_folder = ::mkdtemp(pattern.data());
    }
    CachePlace(CachePlace const&) = delete;
    CachePlace& operator=(CachePlace const&) = delete;
    ~CachePlace() { std::filesystem::remove_all(m_folder); }

    std::string path(std::string const& name) const { return (m_folder / name).string(); }
    std::string cache() const { return path("cache"); }

    void write(std::string const& name, std::string const& text) const {
        std::ofstream(path(name), std::ios::binary) << text;
    }
    static std::string textOf(std::string const& name) {
        return "<model defaultLocale=\"en\"><namespace id=\"n\" name=\"" + name + "\"/></model>";
    }

    /// Of documents of any size, whenever they changed.
    vex::ImageCacheOptions options() const {
        vex::ImageCacheOptions options;
        options.folder = cache();
        options.leastDocument = 0;
        options.settled = std::chrono::nanoseconds(0);
        return options;
    }

    /// The files of the cache with that ending.
    std::vector<std::string> files(std::string const& ending = ".vexm") const {
        std::vector<std::string> found;
        std::error_code none;
        for (auto const& each : std::filesystem::directory_iterator(cache(), none)) {
            if (each.path().extension() == ending) {
                found.push_back(each.path().string());
            }
        }
        return found;
    }

    static std::string read(std::string const& file) {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::filesystem::path m_folder;
};
