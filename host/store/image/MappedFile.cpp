#include "host/store/image/MappedFile.h"

#include "KRLException.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vex {

namespace {

[[noreturn]] void refuse(std::string const& file, std::string const& reason) {
    throw KRLDocumentException(file, 0, 0, "cannot be read: " + reason);
}

class Descriptor {
public:
    explicit Descriptor(std::string const& file)
        : m_number(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    ~Descriptor() {
        if (m_number >= 0) {
            ::close(m_number);
        }
    }

    int number() const { return m_number; }
    /// The size of a file; -1 for what is none.
    off_t fileSize() const {
        struct stat status {};
        return m_number >= 0 && ::fstat(m_number, &status) == 0 && S_ISREG(status.st_mode)
                   ? status.st_size
                   : -1;
    }

private:
    int m_number;
};

} // namespace

MappedFile::MappedFile(std::string const& file, std::size_t limit, std::string const& raisedBy) {
    Descriptor const descriptor(file);
    if (descriptor.number() < 0) {
        refuse(file, std::strerror(errno));
    }
    off_t const size = descriptor.fileSize();
    if (size <= 0) {
        refuse(file, size < 0 ? "it is no file" : "it is empty");
    }
    if (static_cast<std::uintmax_t>(size) > limit) {
        throw KRLDocumentException(file, 0, 0,
                                   "is longer than " + std::to_string(limit) +
                                       " bytes, which is the limit" +
                                       (raisedBy.empty() ? "" : "; raise it with " + raisedBy));
    }
    std::size_t const count = static_cast<std::size_t>(size);
    void* const memory = ::mmap(nullptr, count, PROT_READ, MAP_SHARED, descriptor.number(), 0);
    if (memory == MAP_FAILED) {
        refuse(file, std::strerror(errno));
    }
    ::madvise(memory, count, MADV_WILLNEED); // all of it is looked through first
    m_bytes = {static_cast<std::byte const*>(memory), count};
}

MappedFile::~MappedFile() {
    ::munmap(const_cast<std::byte*>(m_bytes.data()), m_bytes.size());
}

std::string MappedFile::beginningOf(std::string const& file, std::size_t count) {
    Descriptor const descriptor(file);
    if (descriptor.fileSize() < 0) {
        return {};
    }
    std::string beginning(count, '\0');
    ssize_t const length = ::pread(descriptor.number(), beginning.data(), count, 0);
    beginning.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    return beginning;
}

} // namespace vex
