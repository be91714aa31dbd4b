#include "host/store/image/FileBeside.h"

#include "KRLException.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace vex {

FileBeside::FileBeside(std::string place) : m_place(std::move(place)) {
    std::filesystem::path const path(m_place);
    m_beside = (path.parent_path() / ("." + path.filename().string() + ".XXXXXX")).string();
    m_descriptor = ::mkstemp(m_beside.data());
    if (m_descriptor < 0) {
        m_beside.clear();
        refuse(errno);
    }
}

FileBeside::FileBeside(FileBeside&& other) noexcept
    : m_place(std::move(other.m_place)), m_beside(std::exchange(other.m_beside, {})),
      m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FileBeside::~FileBeside() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
    if (!m_beside.empty()) {
        ::unlink(m_beside.c_str());
    }
}

void FileBeside::refuse(int reason) const {
    throw KRLDocumentException(m_place, 0, 0,
                               std::string("cannot be written: ") + std::strerror(reason));
}

void FileBeside::write(std::string_view bytes) {
    while (!bytes.empty()) {
        ssize_t const count = ::write(m_descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            refuse(errno);
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

void FileBeside::finish() {
    // As a file is that a program makes without wishes of its own.
    mode_t const mask = ::umask(0);
    ::umask(mask);
    constexpr mode_t readableAndWritable = 0666;
    if (::fchmod(m_descriptor, readableAndWritable & ~mask) != 0 || ::fsync(m_descriptor) != 0 ||
        ::close(std::exchange(m_descriptor, -1)) != 0) {
        refuse(errno);
    }
}

void FileBeside::putInPlace() {
    if (::rename(m_beside.c_str(), m_place.c_str()) != 0) {
        refuse(errno);
    }
    m_beside.clear();
}

} // namespace vex
