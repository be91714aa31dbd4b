#include "host/store/image/FileBeside.h"

#include "KRLException.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vex {

namespace {

/// Makes a file with a name that nobody else has, and says which. Its rights are those of a file
/// that a program makes without wishes of its own: the system takes the user's mask off, which a
/// process could look at only by changing it under its other threads. -1 when it cannot be made.
int makeFile(std::string const& beginning, std::string& name) {
    constexpr mode_t readableAndWritable = 0666;
    constexpr int mostAttempts = 100;
    std::random_device random;
    int made = -1;
    for (int attempt = 0; attempt < mostAttempts && made < 0; ++attempt) {
        name = beginning + std::to_string(random());
        made = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, readableAndWritable);
        if (made < 0 && errno != EEXIST) {
            break;
        }
    }
    return made;
}

} // namespace

FileBeside::FileBeside(std::string place) : m_place(std::move(place)) {
    std::filesystem::path const path(m_place);
    m_descriptor =
        makeFile((path.parent_path() / ("." + path.filename().string() + '.')).string(), m_beside);
    if (m_descriptor < 0) {
        int const reason = errno;
        m_beside.clear();
        refuse(reason);
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
    if (::fsync(m_descriptor) != 0 || ::close(std::exchange(m_descriptor, -1)) != 0) {
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
