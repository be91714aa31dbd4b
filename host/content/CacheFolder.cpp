#include "host/content/CacheFolder.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <memory>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vex {

namespace {

constexpr mode_t OwnersFolder = 0700;
constexpr mode_t OwnersFile = 0600;
constexpr mode_t WritableByOthers = S_IWGRP | S_IWOTH;
constexpr char const* LockName = "lock";

bool isOwn(struct stat const& status) {
    return status.st_uid == ::geteuid() && (status.st_mode & WritableByOthers) == 0;
}

struct FolderCloser {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

/// Makes each of the folders that is not there.
void makeFolders(std::string const& path) {
    for (std::size_t end = path.find('/', 1); end != std::string::npos;
         end = path.find('/', end + 1)) {
        ::mkdir(path.substr(0, end).c_str(), OwnersFolder);
    }
    ::mkdir(path.c_str(), OwnersFolder);
}

} // namespace

std::optional<CacheFolder> CacheFolder::open(std::string const& path, std::string& problem) {
    CacheFolder folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.m_descriptor < 0) {
        if (errno != ENOENT) {
            problem = path + " cannot be opened: " + ::strerrordesc_np(errno);
        }
        return std::nullopt;
    }
    struct stat status {};
    if (::fstat(folder.m_descriptor, &status) != 0 || !isOwn(status)) {
        problem = path + " is not used: it must belong to who runs the program, and nobody else "
                         "may write to it";
        return std::nullopt;
    }
    return folder;
}

std::optional<CacheFolder> CacheFolder::make(std::string const& path, std::string& problem) {
    makeFolders(path);
    int const failure = errno; // of the last of them, if it is missing
    std::optional<CacheFolder> folder = open(path, problem);
    if (!folder && problem.empty()) {
        problem = path + " cannot be made: " + ::strerrordesc_np(failure);
    }
    return folder;
}

CacheFolder::CacheFolder(CacheFolder&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)), m_lock(std::exchange(other.m_lock, -1)) {
}

CacheFolder& CacheFolder::operator=(CacheFolder&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_lock, other.m_lock);
    return *this;
}

CacheFolder::~CacheFolder() {
    for (int const each : {m_lock, m_descriptor}) {
        if (each >= 0) {
            ::close(each);
        }
    }
}

std::string CacheFolder::pathTo(std::string const& name) const {
    return "/proc/self/fd/" + std::to_string(m_descriptor) + '/' + name;
}

bool CacheFolder::has(std::string const& name) const {
    struct stat status {};
    return ::fstatat(m_descriptor, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISREG(status.st_mode) && isOwn(status);
}

void CacheFolder::use(std::string const& name) const {
    ::utimensat(m_descriptor, name.c_str(), nullptr, AT_SYMLINK_NOFOLLOW);
}

bool CacheFolder::remove(std::string const& name) const {
    return ::unlinkat(m_descriptor, name.c_str(), 0) == 0;
}

bool CacheFolder::put(std::string const& from, std::string const& to) const {
    int const file =
        ::openat(m_descriptor, from.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (file < 0) {
        return false;
    }
    bool const isWhole = ::fchmod(file, OwnersFile) == 0;
    ::close(file);
    return isWhole && ::renameat(m_descriptor, from.c_str(), m_descriptor, to.c_str()) == 0;
}

std::string CacheFolder::readLink(std::string const& name) const {
    std::string target(PATH_MAX, '\0');
    ssize_t const length = ::readlinkat(m_descriptor, name.c_str(), target.data(), target.size());
    target.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return target;
}

bool CacheFolder::link(std::string const& name, std::string const& target) const {
    return ::symlinkat(target.c_str(), m_descriptor, name.c_str()) == 0 || errno == EEXIST;
}

std::vector<std::string> CacheFolder::names() const {
    std::vector<std::string> found;
    int const again = ::openat(m_descriptor, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    std::unique_ptr<DIR, FolderCloser> const entries(again < 0 ? nullptr : ::fdopendir(again));
    if (entries == nullptr) {
        if (again >= 0) {
            ::close(again);
        }
        return found;
    }
    while (dirent const* const entry = ::readdir(entries.get())) {
        std::string_view const name = entry->d_name;
        if (name != "." && name != "..") {
            found.emplace_back(name);
        }
    }
    return found;
}

std::vector<CacheFolder::File> CacheFolder::files() const {
    constexpr std::uint64_t bytesOfABlock = 512; // as the system counts them
    std::vector<File> found;
    for (std::string& name : names()) {
        struct stat status {};
        if (::fstatat(m_descriptor, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
            !S_ISREG(status.st_mode)) {
            continue;
        }
        std::chrono::system_clock::time_point const used(
            std::chrono::seconds(status.st_mtim.tv_sec) +
            std::chrono::nanoseconds(status.st_mtim.tv_nsec));
        found.push_back(
            {std::move(name), static_cast<std::uint64_t>(status.st_blocks) * bytesOfABlock, used});
    }
    std::sort(found.begin(), found.end(), [](File const& one, File const& other) {
        return one.used != other.used ? one.used > other.used : one.name < other.name;
    });
    return found;
}

bool CacheFolder::lock() {
    if (m_lock < 0) {
        m_lock =
            ::openat(m_descriptor, LockName, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, OwnersFile);
    }
    return m_lock >= 0 && ::flock(m_lock, LOCK_EX | LOCK_NB) == 0;
}

} // namespace vex
