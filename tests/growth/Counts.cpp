// Takes the place of the program's allocation functions, those of C++ here, those of C through
// the linker (--wrap), ICU's through its own hook; of the C library's functions on memory; and
// of what the compiler calls at each branch of the counted code.

#include "tests/growth/Counts.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

#include <malloc.h>
#include <unicode/uclean.h>

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
void* __real_memcpy(void* to, void const* from, std::size_t size);
void* __real_memmove(void* to, void const* from, std::size_t size);
int __real_memcmp(void const* a, void const* b, std::size_t size);
void* __real_memchr(void const* in, int byte, std::size_t size);
}

namespace {

constinit thread_local Counts counts;

void* noteTaken(void* block) {
    if (block != nullptr) {
        std::size_t const size = malloc_usable_size(block);
        ++counts.allocations;
        counts.bytes += size;
        counts.held += size;
        counts.peak = std::max(counts.peak, counts.held);
    }
    return block;
}

void noteGiven(void* block) {
    if (block != nullptr) {
        counts.held -= malloc_usable_size(block); // below 0 and back, when others took it
    }
}

void noteMemory(std::size_t size) {
    constexpr std::size_t atOnce = 8;
    counts.steps += size / atOnce;
}

/// Of a text from `start`, to its end when nothing was found.
void noteSearch(std::int32_t start, std::int32_t found, std::int32_t length) {
    std::int32_t const units = found < 0 ? length : found - start;
    noteMemory(sizeof(char16_t) * static_cast<std::size_t>(std::max(units, 0)));
}

void* take(std::size_t size) {
    return noteTaken(__real_malloc(size == 0 ? 1 : size));
}

void* takeAligned(std::size_t size, std::align_val_t alignment) {
    auto const unit = static_cast<std::size_t>(alignment);
    return noteTaken(std::aligned_alloc(unit, (size + unit - 1) / unit * unit));
}

void* orRaise(void* block) {
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void give(void* block) {
    noteGiven(block);
    __real_free(block);
}

void* grow(void* block, std::size_t size) {
    noteGiven(block);
    return noteTaken(__real_realloc(block, size));
}

[[maybe_unused]] bool const icuIsCounted = [] {
    UErrorCode status = U_ZERO_ERROR;
    u_setMemoryFunctions(
        nullptr, [](void const*, std::size_t size) { return take(size); },
        [](void const*, void* block, std::size_t size) { return grow(block, size); },
        [](void const*, void* block) { give(block); }, &status);
    return U_SUCCESS(status);
}();

} // namespace

// Searches of strings, which ICU does in its own code: its functions, by their names in C++.
#define NAME_IN_ICU(prefix, rest) prefix NAME_OF(U_ICU_VERSION_MAJOR_NUM) rest
#define NAME_OF(number) NAME_OF_TEXT(number)
#define NAME_OF_TEXT(number) #number
#define CLASS_IN_ICU "_ZNK6icu_"

std::int32_t findUnit(void const* text, char16_t unit, std::int32_t start,
                      std::int32_t length) __asm__(NAME_IN_ICU("__real_" CLASS_IN_ICU,
                                                               "13UnicodeString9doIndexOfEDsii"));
std::int32_t findText(void const* text, char16_t const* wanted, std::int32_t from,
                      std::int32_t wantedLength, std::int32_t start,
                      std::int32_t length) __asm__(NAME_IN_ICU("__real_" CLASS_IN_ICU,
                                                               "13UnicodeString7indexOfEPKDsiiii"));

#pragma GCC visibility push(default)
std::int32_t
countFindUnit(void const* text, char16_t unit, std::int32_t start,
              std::int32_t length) __asm__(NAME_IN_ICU("__wrap_" CLASS_IN_ICU,
                                                       "13UnicodeString9doIndexOfEDsii"));
std::int32_t
countFindText(void const* text, char16_t const* wanted, std::int32_t from,
              std::int32_t wantedLength, std::int32_t start,
              std::int32_t length) __asm__(NAME_IN_ICU("__wrap_" CLASS_IN_ICU,
                                                       "13UnicodeString7indexOfEPKDsiiii"));

std::int32_t countFindUnit(void const* text, char16_t unit, std::int32_t start,
                           std::int32_t length) {
    std::int32_t const at = findUnit(text, unit, start, length);
    noteSearch(start, at, length);
    return at;
}

std::int32_t countFindText(void const* text, char16_t const* wanted, std::int32_t from,
                           std::int32_t wantedLength, std::int32_t start, std::int32_t length) {
    std::int32_t const at = findText(text, wanted, from, wantedLength, start, length);
    noteSearch(start, at, length);
    return at;
}
#pragma GCC visibility pop

Counts countsNow() {
    return counts;
}

void restartPeak() {
    counts.peak = counts.held;
}

// The libraries of the program call these too.
#pragma GCC visibility push(default)
extern "C" {

void __sanitizer_cov_trace_pc() {
    ++counts.steps;
}

void* __wrap_malloc(std::size_t size) {
    return take(size);
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return noteTaken(__real_calloc(count, size));
}

void* __wrap_realloc(void* block, std::size_t size) {
    return grow(block, size);
}

void __wrap_free(void* block) {
    give(block);
}

void* __wrap_memcpy(void* to, void const* from, std::size_t size) {
    noteMemory(size);
    return __real_memcpy(to, from, size);
}

void* __wrap_memmove(void* to, void const* from, std::size_t size) {
    noteMemory(size);
    return __real_memmove(to, from, size);
}

int __wrap_memcmp(void const* a, void const* b, std::size_t size) {
    noteMemory(size);
    return __real_memcmp(a, b, size);
}

void* __wrap_memchr(void const* in, int byte, std::size_t size) {
    noteMemory(size);
    return __real_memchr(in, byte, size);
}
}
#pragma GCC visibility pop

void* operator new(std::size_t size) {
    return orRaise(take(size));
}

void* operator new[](std::size_t size) {
    return orRaise(take(size));
}

void* operator new(std::size_t size, std::nothrow_t const& /*nothrow*/) noexcept {
    return take(size);
}

void* operator new[](std::size_t size, std::nothrow_t const& /*nothrow*/) noexcept {
    return take(size);
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    return orRaise(takeAligned(size, alignment));
}

void operator delete(void* block) noexcept {
    give(block);
}

void operator delete[](void* block) noexcept {
    give(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    give(block);
}

void operator delete[](void* block, std::size_t /*size*/) noexcept {
    give(block);
}

void operator delete(void* block, std::nothrow_t const& /*nothrow*/) noexcept {
    give(block);
}

void operator delete[](void* block, std::nothrow_t const& /*nothrow*/) noexcept {
    give(block);
}

void operator delete(void* block, std::align_val_t /*alignment*/) noexcept {
    give(block);
}

void operator delete(void* block, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    give(block);
}
