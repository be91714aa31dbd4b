#pragma once

#include "apps/vexma/ShownText.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace vex {

/// Gathers text and writes it to a file descriptor, without memory of its own: also where
/// memory has ended, and in handlers of signals.
class DescriptorText {
public:
    explicit DescriptorText(int descriptor) : m_descriptor(descriptor) {}
    DescriptorText(DescriptorText const&) = delete;
    DescriptorText& operator=(DescriptorText const&) = delete;

    DescriptorText& put(std::string_view text);
    DescriptorText& put(unsigned number);
    /// What may be hostile; gives what is left of a text that is not whole.
    DescriptorText& show(std::string_view text, Spelling spelling = Spelling::Line);
    std::string_view showPart(std::string_view text, Spelling spelling, bool isWhole);

    /// Writes what was gathered. Gives the errno number of the first failure; 0 without one.
    int flush();
    /// How many bytes were written.
    std::size_t written() const { return m_written; }

private:
    int m_descriptor;
    int m_failure = 0;
    std::size_t m_written = 0;
    std::size_t m_length = 0;
    std::array<char, 2048> m_gathered;
};

} // namespace vex
