#pragma once

#include "apps/vexma/ShownText.h"

#include <array>
#include <cstddef>
#include <optional>
#include <streambuf>

#include <sys/types.h>

namespace vex {

/// A buffered stream's way into a file descriptor, which it owns. What is written is whole
/// when the stream is flushed; what is not can be taken back, out of a file too.
class DescriptorBuffer final : public std::streambuf {
public:
    explicit DescriptorBuffer(int descriptor);
    DescriptorBuffer(DescriptorBuffer const&) = delete;
    DescriptorBuffer& operator=(DescriptorBuffer const&) = delete;
    ~DescriptorBuffer() override;

    bool isTerminal() const { return m_isTerminal; }

    /// How a terminal is written to from here on; nothing else is changed.
    void setSpelling(Spelling spelling);

    /// Writes what is buffered without saying that it is whole.
    bool pass();

    /// Drops what is buffered, and cuts a file off where it was whole last. Other kinds of
    /// files keep what they got. Takes no memory.
    void takeBack();

    /// Ends the file, which is whole; nothing can be written any more.
    void close();

    /// Why writing failed, an errno number; 0 when it did not.
    int getFailure() const { return m_failure; }

protected:
    int_type overflow(int_type character) override;
    int sync() override;

private:
    bool write(bool isWhole);

    int m_descriptor;
    bool m_isTerminal;
    Spelling m_spelling = Spelling::Drawn;
    int m_failure = 0;
    std::optional<off_t> m_whole; // where a file was whole last
    off_t m_passed = 0;           // how many bytes it got since
    std::array<char, 65'536> m_buffer;
};

} // namespace vex
