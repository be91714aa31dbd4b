// Put in front of the system's library: memory ends after as many allocations as the
// variable ALLOCATIONS says, counted from the first thing that the program does. With
// "once" in front of the number, a single one fails.

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
int _IO_setvbuf(std::FILE* file, char* buffer, int mode, std::size_t size);
}

namespace {

std::atomic<bool> isCounting{false};
std::atomic<long> left{0};
bool isOnce = false;

bool isAtEnd() {
    if (!isCounting.load(std::memory_order_relaxed)) {
        return false;
    }
    long const before = left.fetch_sub(1);
    bool const ends = isOnce ? before == 0 : before <= 0;
    if (ends) {
        errno = ENOMEM;
    }
    return ends;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
    return isAtEnd() ? nullptr : __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) noexcept {
    return isAtEnd() ? nullptr : __libc_calloc(count, size);
}

__attribute__((visibility("default"))) void* realloc(void* block, std::size_t size) noexcept {
    return isAtEnd() ? nullptr : __libc_realloc(block, size);
}

// The program's first call.
__attribute__((visibility("default"))) int setvbuf(std::FILE* file, char* buffer, int mode,
                                                   std::size_t size) noexcept {
    if (char const* text = std::getenv("ALLOCATIONS"); text != nullptr && !isCounting) {
        isOnce = std::strncmp(text, "once", 4) == 0;
        left = std::strtol(isOnce ? text + 4 : text, nullptr, 10);
        isCounting = true;
    }
    return _IO_setvbuf(file, buffer, mode, size);
}
}
