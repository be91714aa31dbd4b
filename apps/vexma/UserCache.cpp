#include "apps/vexma/UserCache.h"

#include "apps/vexma/SourceOptions.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace vex {

namespace {

constexpr char const* SizeVariable = "VEXMA_CACHE_SIZE";

std::string_view valueOf(char const* variable) {
    char const* const value = std::getenv(variable);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

std::uint64_t cacheSize(std::uint64_t usual) {
    std::string_view const text = valueOf(SizeVariable);
    if (text.empty()) {
        return usual;
    }
    std::uint64_t bytes = 0;
    auto const [end, failure] = std::from_chars(text.data(), text.data() + text.size(), bytes);
    if (failure != std::errc() || end != text.data() + text.size()) {
        throw UsageException(std::string(SizeVariable) + " is \"" + std::string(text) +
                             "\"; write a number of bytes, such as 1073741824, or 0 for no cache");
    }
    return bytes;
}

} // namespace

std::string userCacheFolder() {
    std::string_view const caches = valueOf("XDG_CACHE_HOME");
    if (caches.starts_with('/')) { // a relative one means nothing
        return std::string(caches) + "/vexma";
    }
    std::string_view const home = valueOf("HOME");
    return home.starts_with('/') ? std::string(home) + "/.cache/vexma" : "";
}

std::shared_ptr<ImageCache> openUserCache(Console& console) {
    // A command may read from several sources: one cache for all of them.
    static std::weak_ptr<ImageCache> opened;
    if (auto cache = opened.lock()) {
        return cache;
    }
    ImageCacheOptions options;
    options.folder = userCacheFolder();
    options.mostBytes = cacheSize(options.mostBytes);
    if (options.folder.empty() || options.mostBytes == 0) {
        return nullptr;
    }
    auto const cache = std::make_shared<ImageCache>(std::move(options));
    opened = cache;
    console.afterResults([cache, &console] {
        for (auto const& [file, reason] : cache->finish()) {
            if (console.isVerbose()) {
                console.complain("cache: " + file + ": " + reason);
            }
        }
    });
    return cache;
}

} // namespace vex
