#include "apps/vexma/DescriptorBuffer.h"

#include "apps/vexma/DescriptorText.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vex {

namespace {

/// Where the next byte goes; none where bytes cannot be taken back.
std::optional<off_t> placeIn(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    bool const appends = (::fcntl(descriptor, F_GETFL) & O_APPEND) != 0;
    return appends ? status.st_size : ::lseek(descriptor, 0, SEEK_CUR);
}

} // namespace

DescriptorBuffer::DescriptorBuffer(int descriptor)
    : m_descriptor(descriptor), m_isTerminal(::isatty(descriptor) == 1),
      m_whole(placeIn(descriptor)) {
    setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
}

DescriptorBuffer::~DescriptorBuffer() {
    close();
}

void DescriptorBuffer::close() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

void DescriptorBuffer::setSpelling(Spelling spelling) {
    if (m_isTerminal && spelling != m_spelling) {
        write(true);
        m_spelling = spelling;
    }
}

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type character) {
    if (!write(false)) {
        return traits_type::eof();
    }
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(character);
        pbump(1);
    }
    return traits_type::not_eof(character);
}

int DescriptorBuffer::sync() {
    if (!write(true)) {
        return -1;
    }
    if (m_whole) {
        *m_whole += m_passed;
        m_passed = 0;
    }
    return 0;
}

bool DescriptorBuffer::pass() {
    return write(true);
}

bool DescriptorBuffer::write(bool isWhole) {
    std::string_view rest(pbase(), static_cast<std::size_t>(pptr() - pbase()));
    if (m_isTerminal && m_failure == 0) {
        DescriptorText text(m_descriptor);
        rest = text.showPart(rest, m_spelling, isWhole);
        m_failure = text.flush();
    }
    while (!m_isTerminal && m_failure == 0 && !rest.empty()) {
        ssize_t const count = ::write(m_descriptor, rest.data(), rest.size());
        if (count >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(count));
            m_passed += count;
        } else if (errno != EINTR) {
            m_failure = errno;
        }
    }
    // Of a terminal's, the start of a character is kept until its end comes.
    std::size_t const kept = m_failure == 0 ? rest.size() : 0;
    std::copy_n(rest.data(), kept, m_buffer.data());
    setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
    pbump(static_cast<int>(kept));
    return m_failure == 0;
}

void DescriptorBuffer::takeBack() {
    setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
    struct stat status {};
    // Not what others have written to the file since.
    if (m_whole && m_passed > 0 && ::fstat(m_descriptor, &status) == 0 &&
        status.st_size == *m_whole + m_passed && ::ftruncate(m_descriptor, *m_whole) == 0) {
        ::lseek(m_descriptor, *m_whole, SEEK_SET);
        m_passed = 0;
    }
}

} // namespace vex
