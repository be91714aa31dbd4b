#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

struct stat;

namespace vex {

/// Which file it is and when it changed last: while it is the same, so is what the file holds,
/// once that had settled.
class FileState {
public:
    /// Nothing for what is not there, and for what is no file but a pipe, a device, a folder.
    static std::optional<FileState> of(std::string const& file);
    explicit FileState(struct stat const& status);

    std::uint64_t bytes() const { return m_bytes; }

    /// A clock that ticks slowly shows two changes as one: what changed less than `margin` ago,
    /// or will by its time, may change again and look the same.
    bool isSettled(std::chrono::system_clock::time_point now,
                   std::chrono::nanoseconds margin) const;

    /// Device, inode, size and times, in digits of hexadecimal numbers and "-".
    std::string text() const;

    friend bool operator==(FileState const&, FileState const&) = default;

private:
    std::uint64_t m_device;
    std::uint64_t m_inode;
    std::uint64_t m_bytes;
    std::chrono::nanoseconds m_modified; // since 1970, which who owns the file can set
    std::chrono::nanoseconds m_changed;  // the same, which nobody can
};

} // namespace vex
