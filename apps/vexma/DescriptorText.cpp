#include "apps/vexma/DescriptorText.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include <unistd.h>

namespace vex {

DescriptorText& DescriptorText::put(std::string_view text) {
    while (!text.empty()) {
        if (m_length == m_gathered.size()) {
            flush();
        }
        std::size_t const count = std::min(text.size(), m_gathered.size() - m_length);
        text.copy(m_gathered.data() + m_length, count);
        m_length += count;
        text.remove_prefix(count);
    }
    return *this;
}

DescriptorText& DescriptorText::put(unsigned number) {
    std::array<char, 12> digits{};
    std::snprintf(digits.data(), digits.size(), "%u", number);
    return put(digits.data());
}

DescriptorText& DescriptorText::show(std::string_view text, Spelling spelling) {
    showPart(text, spelling, true);
    return *this;
}

std::string_view DescriptorText::showPart(std::string_view text, Spelling spelling, bool isWhole) {
    ShownText pieces(text, spelling, isWhole);
    for (std::string_view piece = pieces.next(); !piece.empty(); piece = pieces.next()) {
        put(piece);
    }
    return pieces.rest();
}

int DescriptorText::flush() {
    char const* at = m_gathered.data();
    while (m_failure == 0 && m_length > 0) {
        ssize_t const count = ::write(m_descriptor, at, m_length);
        if (count >= 0) {
            at += count;
            m_length -= static_cast<std::size_t>(count);
            m_written += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            m_failure = errno;
        }
    }
    m_length = 0;
    return m_failure;
}

} // namespace vex
