#include "apps/vexma/Commands.h"
#include "apps/vexma/ShownText.h"
#include "apps/vexma/SourceOptions.h"
#include "apps/vexma/UserCache.h"
#include "host/content/CachedImages.h"

#include <array>
#include <ctime>
#include <memory>
#include <optional>

namespace vex {

namespace {

/// 2026-11-23T04:05:06Z
std::string inWorldTime(std::chrono::system_clock::time_point time) {
    std::time_t const seconds = std::chrono::system_clock::to_time_t(time);
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text.data();
}

std::string documentOf(CachedImage const& image) {
    return image.document.empty() ? "(a document that is not known any more)" : image.document;
}

int list(CacheFolder& folder, Console& console) {
    for (CachedImage const& each : listImages(folder)) {
        console.out() << each.bytes << '\t' << inWorldTime(each.used) << '\t'
                      << printable(documentOf(each), false) << '\n';
    }
    return Done;
}

int clear(CacheFolder& folder, Console& console) {
    std::uint64_t bytes = 0;
    std::vector<CachedImage> const cleared = clearImages(folder);
    for (CachedImage const& each : cleared) {
        bytes += each.bytes;
    }
    if (folder.lock()) { // nobody writes: what is unfinished stays so
        boundImages(folder, 0);
    }
    console.out() << "removed: " << cleared.size() << ", bytes: " << bytes << '\n';
    if (std::size_t const left = listImages(folder).size(); left != 0) {
        console.complain(std::to_string(left) + " images cannot be removed from " +
                         userCacheFolder());
        return Refused;
    }
    return Done;
}

struct Action {
    char const* name;
    int (*run)(CacheFolder& folder, Console& console);
};
constexpr Action actions[] = {{"list", &list}, {"clear", &clear}};

int runAction(std::string const& asked, Console& console) {
    std::string const path = userCacheFolder();
    if (path.empty()) {
        throw UsageException("there is no place for a cache; set HOME or XDG_CACHE_HOME to an "
                             "absolute path");
    }
    std::string problem;
    std::optional<CacheFolder> folder = CacheFolder::open(path, problem);
    if (!folder) {
        if (problem.empty()) {
            console.complain("the cache is empty: there is no " + path);
            return Done;
        }
        console.complain(problem);
        return Unreadable;
    }
    for (Action const& action : actions) {
        if (asked == action.name) {
            return action.run(*folder, console);
        }
    }
    return WrongUsage;
}

} // namespace

CommandRun addCacheCommand(CommandSyntax& command) {
    auto const asked = std::make_shared<std::string>();
    std::vector<std::string> names;
    for (Action const& action : actions) {
        names.emplace_back(action.name);
    }
    command.add({.name = "ACTION",
                 .into = asked.get(),
                 .help = "list: the images, used last first; clear: remove them all",
                 .isRequired = true,
                 .choices = names});
    command.epilog =
        R"(A model document of 1 MiB or more that a command reads is kept as an image; the next one
opens that in place of reading. A document that changed is read again. "list" prints a line for
each image: the bytes that it takes, when it was used last, its document.

The images stand in $XDG_CACHE_HOME/vexma, else in $HOME/.cache/vexma, for their owner alone. They
take $VEXMA_CACHE_SIZE bytes at most (default: 1073741824; 0 for no cache): those that were not
used for longest go. --no-cache has a command do without.

Examples:
  vexma cache list
  vexma cache clear)";
    return [asked](Console& console) { return runAction(*asked, console); };
}

} // namespace vex
