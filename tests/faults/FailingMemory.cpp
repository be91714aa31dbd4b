// Takes the place of the program's allocation functions: those of C++ here, those
// of C through the linker (--wrap), ICU's through its own hook.

#include "tests/faults/FailingMemory.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include <link.h>
#include <unicode/uclean.h>

extern "C" void* __real_malloc(std::size_t size);
extern "C" void* __real_realloc(void* block, std::size_t size);
extern "C" void __real_free(void* block);

namespace {

struct Plan {
    std::size_t untilFailure; // 0: none fails
    failingMemory::Mode mode;
    bool failed;
};

constinit thread_local Plan plan{0, failingMemory::Mode::Once, false};
constinit thread_local long live = 0;

bool fails() {
    if (plan.untilFailure == 0 || --plan.untilFailure != 0) {
        return false;
    }
    plan.failed = true;
    plan.untilFailure = plan.mode == failingMemory::Mode::FromThenOn ? 1 : 0;
    return true;
}

void* take(std::size_t size) {
    if (fails()) {
        return nullptr;
    }
    void* const block = __real_malloc(size == 0 ? 1 : size);
    live += block != nullptr ? 1 : 0;
    return block;
}

void giveBack(void* block) {
    live -= block != nullptr ? 1 : 0;
    __real_free(block);
}

// Where the XML library's code lies. What that library itself leaves behind
// after a failure is not counted.
struct Range {
    std::uintptr_t first = 0;
    std::uintptr_t last = 0;
};

Range const xmlLibrary = [] {
    Range range;
    dl_iterate_phdr(
        [](dl_phdr_info* library, std::size_t, void* found) {
            if (std::strstr(library->dlpi_name, "libxerces-c") == nullptr) {
                return 0;
            }
            for (int i = 0; i < library->dlpi_phnum; ++i) {
                auto const& part = library->dlpi_phdr[i];
                if (part.p_type == PT_LOAD && (part.p_flags & PF_X) != 0) {
                    std::uintptr_t const first = library->dlpi_addr + part.p_vaddr;
                    *static_cast<Range*>(found) = {first, first + part.p_memsz};
                }
            }
            return 1;
        },
        &range);
    return range;
}();

struct alignas(std::max_align_t) Header {
    bool isCounted;
};

void* takeObject(std::size_t size, void const* caller) {
    if (fails()) {
        return nullptr;
    }
    auto* const header = static_cast<Header*>(__real_malloc(sizeof(Header) + size));
    if (header == nullptr) {
        return nullptr;
    }
    auto const at = reinterpret_cast<std::uintptr_t>(caller);
    header->isCounted = at < xmlLibrary.first || at >= xmlLibrary.last;
    live += header->isCounted ? 1 : 0;
    return header + 1;
}

void giveBackObject(void* object) {
    if (object != nullptr) {
        Header* const header = static_cast<Header*>(object) - 1;
        live -= header->isCounted ? 1 : 0;
        __real_free(header);
    }
}

void* grow(void* block, std::size_t size) {
    if (fails()) {
        return nullptr;
    }
    void* const grown = __real_realloc(block, size);
    live += block == nullptr && grown != nullptr ? 1 : 0;
    return grown;
}

bool const icuIsHooked = [] {
    UErrorCode status = U_ZERO_ERROR;
    u_setMemoryFunctions(
        nullptr, [](void const*, std::size_t size) { return take(size); },
        [](void const*, void* block, std::size_t size) { return grow(block, size); },
        [](void const*, void* block) { giveBack(block); }, &status);
    return U_SUCCESS(status);
}();

} // namespace

extern "C" void* __wrap_malloc(std::size_t size) {
    return take(size);
}

extern "C" void* __wrap_realloc(void* block, std::size_t size) {
    return grow(block, size);
}

extern "C" void __wrap_free(void* block) {
    giveBack(block);
}

// For the leak sanitizer the same holds: what the libraries leave is their own.
// ICU drops the name of a locale that it has no memory for.
extern "C" char const* __lsan_default_suppressions();
extern "C" __attribute__((visibility("default"))) char const* __lsan_default_suppressions() {
    return "leak:libxerces-c\nleak:libicuuc";
}

void* operator new(std::size_t size) {
    if (void* const object = takeObject(size, __builtin_return_address(0))) {
        return object;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return takeObject(size, __builtin_return_address(0));
}

void* operator new[](std::size_t size) {
    if (void* const object = takeObject(size, __builtin_return_address(0))) {
        return object;
    }
    throw std::bad_alloc();
}

void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return takeObject(size, __builtin_return_address(0));
}

void operator delete(void* object) noexcept {
    giveBackObject(object);
}

void operator delete(void* object, std::size_t) noexcept {
    giveBackObject(object);
}

void operator delete[](void* object) noexcept {
    giveBackObject(object);
}

void operator delete[](void* object, std::size_t) noexcept {
    giveBackObject(object);
}

namespace failingMemory {

long liveBlocks() {
    return live;
}

Scope::Scope(std::size_t nth, Mode mode) {
    plan = {icuIsHooked ? nth : 0, mode, false};
}

Scope::~Scope() {
    plan.untilFailure = 0;
}

bool Scope::hasFailed() const {
    return plan.failed;
}

Pause::Pause() : m_untilFailure(plan.untilFailure) {
    plan.untilFailure = 0;
}

Pause::~Pause() {
    plan.untilFailure = m_untilFailure;
}

} // namespace failingMemory
