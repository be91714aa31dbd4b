#include "host/import/xml/FileText.h"

#include "KRLException.h"
#include "host/store/image/Budget.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace vex {

namespace {

class Descriptor {
public:
    explicit Descriptor(std::string const& file)
        : m_owned(file != "-"),
          m_number(m_owned ? ::open(file.c_str(), O_RDONLY | O_CLOEXEC) : STDIN_FILENO) {}
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    ~Descriptor() {
        if (m_owned && m_number >= 0) {
            ::close(m_number);
        }
    }
    int number() const { return m_number; }

private:
    bool m_owned;
    int m_number;
};

constexpr std::size_t stepsOfAPiece = 1'024; // of what a budget takes

[[noreturn]] void refuse(std::string const& file, std::string const& problem) {
    throw KRLDocumentException(file == "-" ? "standard input" : file, 0, 0, problem);
}

} // namespace

std::string InputLimit::problem() const {
    std::string const raise = *option == '\0' ? "" : std::string("; raise it with ") + option;
    return "is longer than " + std::to_string(bytes) + " bytes, which is the limit" + raise;
}

std::string readFileText(std::string const& file, InputLimit const& limit) {
    Descriptor const descriptor(file);
    if (descriptor.number() < 0) {
        refuse(file, std::string("cannot be opened: ") + std::strerror(errno));
    }
    std::string text;
    std::array<char, 65'536> buffer;
    for (;;) {
        Budget::charge(stepsOfAPiece);
        ssize_t const count = ::read(descriptor.number(), buffer.data(), buffer.size());
        if (count == 0) {
            return text;
        }
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            refuse(file, std::string("cannot be read: ") + std::strerror(errno));
        }
        if (static_cast<std::size_t>(count) > limit.bytes - text.size()) {
            refuse(file, limit.problem());
        }
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

} // namespace vex
