#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// A folder of one user, for files that can be made again at any time. What lies in it is
/// believed, so it is used only when it belongs to who runs the program and nobody else may
/// write there. It is held open: whatever is put into its place meanwhile is not looked at.
/// Nothing raises but `std::bad_alloc`. One thread at a time; any number of processes.
class CacheFolder {
public:
    struct File {
        std::string name;
        std::uint64_t bytes; // on the disk
        std::chrono::system_clock::time_point used;
    };

    /// Nothing when there is none, or none to be used; `problem` says why then, and stays
    /// empty for a folder that is not there.
    static std::optional<CacheFolder> open(std::string const& path, std::string& problem);
    /// The same; makes it and those above it, for its owner alone.
    static std::optional<CacheFolder> make(std::string const& path, std::string& problem);
    CacheFolder(CacheFolder&& other) noexcept;
    CacheFolder& operator=(CacheFolder&& other) noexcept;
    ~CacheFolder();

    /// The name of the file for who opens it, valid while the folder is held open.
    std::string pathTo(std::string const& name) const;

    /// A file of the user that nobody else may write to; false for none.
    bool has(std::string const& name) const;
    /// Notes that it was of use.
    void use(std::string const& name) const;
    bool remove(std::string const& name) const;
    /// For its owner alone, before it is seen under the new name.
    bool put(std::string const& from, std::string const& to) const;

    /// What a link says; "" when it is none.
    std::string readLink(std::string const& name) const;
    bool link(std::string const& name, std::string const& target) const;

    /// The files in it, links aside, used last first.
    std::vector<File> files() const;
    /// Everything in it.
    std::vector<std::string> names() const;

    /// True for one process at a time, until the folder is closed or that process ends.
    bool lock();

private:
    explicit CacheFolder(int descriptor) : m_descriptor(descriptor) {}

    int m_descriptor;
    int m_lock = -1;
};

} // namespace vex
