// `read` is reached through the linker (--wrap).

#include "tests/faults/FailingFile.h"

#include <algorithm>
#include <cerrno>

#include <unistd.h>

extern "C" ssize_t __real_read(int descriptor, void* target, std::size_t room);

namespace {
FailingFile* current = nullptr;
}

FailingFile::FailingFile() {
    current = this;
}

FailingFile::~FailingFile() {
    current = nullptr;
}

extern "C" ssize_t __wrap_read(int descriptor, void* target, std::size_t room) {
    if (current == nullptr) {
        return __real_read(descriptor, target, room);
    }
    ++current->reads;
    if (current->reads == current->errorAt || current->reads == current->interruptionAt) {
        errno = current->reads == current->errorAt ? EIO : EINTR;
        return -1;
    }
    ssize_t const count = __real_read(
        descriptor, target, std::min({room, current->piece, current->length - current->given}));
    current->given += count > 0 ? static_cast<std::size_t>(count) : 0;
    return count;
}
