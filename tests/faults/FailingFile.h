#pragma once

#include <cstddef>
#include <limits>

/// How this program reads files while such an object lives; one at a time.
struct FailingFile {
    static constexpr std::size_t Unlimited = std::numeric_limits<std::size_t>::max();

    FailingFile();
    ~FailingFile();
    FailingFile(FailingFile const&) = delete;
    FailingFile& operator=(FailingFile const&) = delete;

    std::size_t errorAt = 0;        // this read, counted from 1, ends with an error
    std::size_t interruptionAt = 0; // this one is interrupted by a signal
    std::size_t piece = Unlimited;  // bytes that a read gives at most
    std::size_t length = Unlimited; // bytes after which the file seems to end
    std::size_t reads = 0;          // so far
    std::size_t given = 0;          // bytes so far
};
