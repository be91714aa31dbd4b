#include "host/import/draft/WrittenFiles.h"

#include "KRLException.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace vex {

namespace {

[[noreturn]] void refuse(std::string const& file, std::string const& reason) {
    throw KRLDocumentException(file, 0, 0, "cannot be written: " + reason);
}

/// A file beside the place that it is meant for; gone again unless it was put there.
class FileBeside {
public:
    explicit FileBeside(FileToWrite const& wanted) : m_place(wanted.file) {
        std::filesystem::path const place(m_place);
        m_beside = (place.parent_path() / ("." + place.filename().string() + ".XXXXXX")).string();
        int const descriptor = ::mkstemp(m_beside.data());
        if (descriptor < 0) {
            m_beside.clear();
            refuse(m_place, std::strerror(errno));
        }
        int const failure = fill(descriptor, wanted.text);
        if (::close(descriptor) != 0 || failure != 0) {
            int const reason = failure != 0 ? failure : errno;
            remove();
            refuse(m_place, std::strerror(reason));
        }
    }
    FileBeside(FileBeside&& other) noexcept
        : m_place(std::move(other.m_place)), m_beside(std::exchange(other.m_beside, {})) {}
    FileBeside& operator=(FileBeside&&) = delete;
    ~FileBeside() { remove(); }

    void putInPlace() {
        if (::rename(m_beside.c_str(), m_place.c_str()) != 0) {
            refuse(m_place, std::strerror(errno));
        }
        m_beside.clear();
    }

private:
    /// An errno number; 0 when all was written.
    static int fill(int descriptor, std::string const& text) {
        for (std::size_t done = 0; done < text.size();) {
            ssize_t const count = ::write(descriptor, text.data() + done, text.size() - done);
            if (count < 0 && errno != EINTR) {
                return errno;
            }
            done += count < 0 ? 0 : static_cast<std::size_t>(count);
        }
        // As a file is that a program makes without wishes of its own.
        mode_t const mask = ::umask(0);
        ::umask(mask);
        constexpr mode_t readableAndWritable = 0666;
        if (::fchmod(descriptor, readableAndWritable & ~mask) != 0 || ::fsync(descriptor) != 0) {
            return errno;
        }
        return 0;
    }

    void remove() noexcept {
        if (!m_beside.empty()) {
            ::unlink(m_beside.c_str());
        }
    }

    std::string m_place;
    std::string m_beside;
};

} // namespace

void writeFilesTogether(std::vector<FileToWrite> const& files) {
    std::vector<FileBeside> written;
    for (FileToWrite const& wanted : files) {
        std::error_code problem;
        if (std::filesystem::is_directory(wanted.file, problem)) {
            refuse(wanted.file, std::strerror(EISDIR));
        }
        auto const folder = std::filesystem::path(wanted.file).parent_path();
        if (!folder.empty()) {
            std::filesystem::create_directories(folder, problem);
            if (problem) {
                refuse(wanted.file, problem.message());
            }
        }
        written.emplace_back(wanted);
    }
    for (FileBeside& file : written) {
        file.putInPlace();
    }
}

} // namespace vex
