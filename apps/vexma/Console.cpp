#include "apps/vexma/Console.h"

#include "apps/vexma/DescriptorText.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include <fcntl.h>
#include <unistd.h>

namespace vex {

namespace {

/// What is opened later must not take the place of a stream that the program was started
/// without: results and complaints would go there.
void occupyStandardStreams() {
    int opened = 0;
    do {
        opened = ::open("/dev/null", O_RDONLY); // writing there fails
    } while (opened >= STDIN_FILENO && opened <= STDERR_FILENO);
    if (opened >= 0) {
        ::close(opened);
    }
}

/// Keeps the way to standard output for the results and gives its number to
/// standard error.
int takeStandardOutput() {
    occupyStandardStreams();
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

Console::Console()
    : m_buffer(takeStandardOutput()), m_out(&m_buffer), m_outIsTerminal(m_buffer.isTerminal()),
      m_errorIsTerminal(::isatty(STDERR_FILENO) == 1) {
    std::signal(SIGPIPE, SIG_IGN); // a reader that stops reading ends the output, not us
    std::signal(SIGXFSZ, SIG_IGN); // and so does a file that may not grow
}

bool Console::outHasColour() const {
    char const* const terminal = std::getenv("TERM");
    return m_outIsTerminal && !isSet("NO_COLOR") && terminal != nullptr &&
           std::strcmp(terminal, "dumb") != 0;
}

void Console::complain(std::string_view text) {
    m_buffer.pass(); // in a terminal, what was found before stands before
    DescriptorText(STDERR_FILENO).put("vexma: ").show(text).put("\n").flush();
}

int Console::finish(int status) {
    int const result = finishResults(status);
    if (!m_afterResults.empty()) {
        m_buffer.close(); // who reads the results has them all
    }
    for (auto const& work : m_afterResults) {
        try {
            work();
        } catch (std::bad_alloc const&) { // the results are out
        }
    }
    return result;
}

int Console::finishResults(int status) {
    m_out.flush();
    int const failure = m_buffer.getFailure();
    if (failure == 0) {
        return status == Done && m_hasFailed ? Refused : status;
    }
    m_buffer.takeBack();
    if (failure != EPIPE) {
        DescriptorText(STDERR_FILENO)
            .put("vexma: the results cannot be written: ")
            .put(::strerrordesc_np(failure))
            .put("\n")
            .flush();
    }
    return status == Done ? Refused : status;
}

} // namespace vex
