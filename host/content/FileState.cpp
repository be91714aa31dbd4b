#include "host/content/FileState.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include <sys/stat.h>

namespace vex {

namespace {

std::chrono::nanoseconds sinceEpoch(timespec const& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

std::optional<FileState> FileState::of(std::string const& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return FileState(status);
}

FileState::FileState(struct stat const& status)
    : m_device(status.st_dev), m_inode(status.st_ino),
      m_bytes(static_cast<std::uint64_t>(status.st_size)), m_modified(sinceEpoch(status.st_mtim)),
      m_changed(sinceEpoch(status.st_ctim)) {}

bool FileState::isSettled(std::chrono::system_clock::time_point now,
                          std::chrono::nanoseconds margin) const {
    return std::max(m_modified, m_changed) + margin <= now.time_since_epoch();
}

std::string FileState::text() const {
    char text[96];
    std::snprintf(text, sizeof text, "%" PRIx64 "-%" PRIx64 "-%" PRIx64 "-%" PRIx64 "-%" PRIx64,
                  m_device, m_inode, m_bytes, static_cast<std::uint64_t>(m_modified.count()),
                  static_cast<std::uint64_t>(m_changed.count()));
    return text;
}

} // namespace vex
