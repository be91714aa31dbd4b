#include "platform/src/document/KRLIDOM_SpareBlocks.h"

#include <array>
#include <bit>
#include <new>

// A document that is used after it is gone shows under this sanitizer only if its memory is
// not used again.
#if defined(__SANITIZE_ADDRESS__)
#define VEX_KEEP_BLOCKS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VEX_KEEP_BLOCKS 0
#endif
#endif
#ifndef VEX_KEEP_BLOCKS
#define VEX_KEEP_BLOCKS 1
#endif

namespace {

// Documents are cut from blocks of 16, 32, ... 512 KB.
constexpr unsigned smallest = 14; // by the power of two
constexpr unsigned largest = 19;

struct Spare {
    Spare* next;
};

struct Spares {
    std::array<Spare*, largest - smallest + 1> blocks; // by size
    std::size_t bytes;
    bool isEnded; // documents may go later than what the thread keeps
};

constinit thread_local Spares spares{};

Spare*& placeOf(std::size_t size) {
    return spares.blocks[static_cast<unsigned>(std::countr_zero(size)) - smallest];
}

// Gives the blocks back when the thread ends.
struct ThreadEnd {
    ~ThreadEnd() {
        KRLIDOM_SpareBlocks::release();
        spares.isEnded = true;
    }
};

thread_local ThreadEnd threadEnd;

} // namespace

bool KRLIDOM_SpareBlocks::areKept(std::size_t size) noexcept {
    return VEX_KEEP_BLOCKS != 0 && std::has_single_bit(size) && size >= (1U << smallest) &&
           size <= (1U << largest);
}

void* KRLIDOM_SpareBlocks::take(std::size_t size) noexcept {
    Spare*& place = placeOf(size);
    Spare* const block = place;
    if (block != nullptr) {
        place = block->next;
        spares.bytes -= size;
    }
    return block;
}

bool KRLIDOM_SpareBlocks::keep(void* block, std::size_t size) noexcept {
    if (spares.isEnded || spares.bytes + size > Most) {
        return false;
    }
    static_cast<void>(&threadEnd); // made when first used
    Spare*& place = placeOf(size);
    place = ::new (block) Spare{place};
    spares.bytes += size;
    return true;
}

void KRLIDOM_SpareBlocks::release() noexcept {
    for (Spare*& place : spares.blocks) {
        while (Spare* const block = place) {
            place = block->next;
            ::operator delete(block);
        }
    }
    spares.bytes = 0;
}
