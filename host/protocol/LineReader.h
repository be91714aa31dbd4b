#pragma once

#include <cstddef>
#include <string>

namespace vex {

/// Reads lines from a file descriptor. A line that is too long is read to its
/// end and dropped, so that the next one starts where it should.
class LineReader {
public:
    enum class Result { Line, TooLong, End };

    LineReader(int descriptor, std::size_t limit) : m_descriptor(descriptor), m_limit(limit) {}

    /// Sets `line` to the next line without its line break; a last line needs
    /// none. Raises `KRLDocumentException` when reading fails.
    Result next(std::string& line);

private:
    bool fill();

    int m_descriptor;
    std::size_t m_limit;
    std::string m_buffer;
    std::size_t m_at = 0; // what stands before it in the buffer has been handed out
};

} // namespace vex
