#include "apps/vexma/Console.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include <fcntl.h>
#include <unistd.h>

namespace vex {

namespace {

/// Keeps the way to standard output for the results and gives its number to
/// standard error.
int takeStandardOutput() {
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // prints of plug-ins keep their place among the rest
    int const results = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    return results;
}

bool isSet(char const* variable) {
    char const* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

} // namespace

DescriptorBuffer::DescriptorBuffer(int descriptor) : m_descriptor(descriptor) {
    setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
}

DescriptorBuffer::~DescriptorBuffer() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

bool DescriptorBuffer::isTerminal() const {
    return ::isatty(m_descriptor) == 1;
}

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type character) {
    if (sync() != 0) {
        return traits_type::eof();
    }
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(character);
        pbump(1);
    }
    return traits_type::not_eof(character);
}

int DescriptorBuffer::sync() {
    char const* at = pbase();
    while (m_failure == 0 && at < pptr()) {
        ssize_t const count = ::write(m_descriptor, at, static_cast<std::size_t>(pptr() - at));
        if (count >= 0) {
            at += count;
        } else if (errno != EINTR) {
            m_failure = errno;
        }
    }
    setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
    return m_failure == 0 ? 0 : -1;
}

Console::Console()
    : m_buffer(takeStandardOutput()), m_out(&m_buffer), m_outIsTerminal(m_buffer.isTerminal()),
      m_errorIsTerminal(::isatty(STDERR_FILENO) == 1) {
    std::signal(SIGPIPE, SIG_IGN); // a reader that stops reading ends the output, not us
}

bool Console::outHasColour() const {
    char const* const terminal = std::getenv("TERM");
    return m_outIsTerminal && !isSet("NO_COLOR") && terminal != nullptr &&
           std::strcmp(terminal, "dumb") != 0;
}

void Console::complain(std::string_view text) {
    m_out.flush(); // in a terminal, what was found before stands before
    std::cerr << "vexma: " << printable(text, true) << std::endl;
}

int Console::finish(int status) {
    m_out.flush();
    int const failure = m_buffer.getFailure();
    if (failure == 0 || failure == EPIPE) {
        return status;
    }
    complain(std::string("the results cannot be written: ") + std::strerror(failure));
    return status == Done ? Refused : status;
}

std::string printable(std::string_view text, bool keepLines) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string shown;
    shown.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        auto const byte = static_cast<unsigned char>(text[at]);
        bool const line = byte == '\n' || byte == '\t';
        if (line) {
            shown += keepLines ? text[at] : ' ';
        } else if (byte < 0x20 || byte == 0x7F) {
            shown += replacement;
        } else if (byte == 0xC2 && at + 1 < text.size() &&
                   static_cast<unsigned char>(text[at + 1]) < 0xA0) { // U+0080 to U+009F
            shown += replacement;
            ++at;
        } else {
            shown += text[at];
        }
    }
    return shown;
}

} // namespace vex
