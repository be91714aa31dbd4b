#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace vex {

/// A file as memory, read only and shared with all who map it. It must not be written to
/// while it is mapped: what was looked at would be something else, and where it was cut off
/// there is no memory any more.
class MappedFile {
public:
    /// Raises `KRLDocumentException` for what is no file, cannot be read, is empty or has more
    /// than `limit` bytes; `raisedBy` is the option that changes it, "" when there is none.
    MappedFile(std::string const& file, std::size_t limit, std::string const& raisedBy);
    MappedFile(MappedFile const&) = delete;
    MappedFile& operator=(MappedFile const&) = delete;
    ~MappedFile();

    std::span<std::byte const> bytes() const { return m_bytes; }

    /// The first bytes of a file; fewer when it has no more, none for what is no file or
    /// cannot be read. A pipe keeps what it holds.
    static std::string beginningOf(std::string const& file, std::size_t count);

private:
    std::span<std::byte const> m_bytes;
};

} // namespace vex
