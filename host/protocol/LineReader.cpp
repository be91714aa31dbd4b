#include "host/protocol/LineReader.h"

#include "KRLException.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace vex {

namespace {
constexpr std::size_t readSize = 65'536;
}

LineReader::Result LineReader::next(std::string& line) {
    line.clear();
    bool tooLong = false;
    for (;;) {
        std::size_t const end = m_buffer.find('\n', m_at);
        std::size_t const stop = end == std::string::npos ? m_buffer.size() : end;
        if (stop - m_at > m_limit - line.size()) {
            tooLong = true;
        }
        if (!tooLong) {
            line.append(m_buffer, m_at, stop - m_at);
        }
        m_at = stop;
        if (end != std::string::npos) {
            ++m_at;
            break;
        }
        bool const wasEmpty = line.empty() && !tooLong;
        if (!fill()) {
            if (wasEmpty) {
                return Result::End;
            }
            break;
        }
    }
    return tooLong ? Result::TooLong : Result::Line;
}

bool LineReader::fill() {
    m_buffer.resize(readSize);
    m_at = 0;
    ssize_t count = -1;
    do {
        count = ::read(m_descriptor, m_buffer.data(), m_buffer.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        m_buffer.clear();
        throw KRLDocumentException("standard input", 0, 0,
                                   std::string("cannot be read: ") + std::strerror(errno));
    }
    m_buffer.resize(static_cast<std::size_t>(count));
    return count > 0;
}

} // namespace vex
