// What filling a set costs, counted in allocations: takes the place of the program's
// allocation functions.

#include "tests/security/EngineCase.h"

#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

namespace {

constinit thread_local std::size_t allocations = 0;

std::size_t allocationsOf(auto const& work) {
    std::size_t const before = allocations;
    work();
    return allocations - before;
}

std::string const id = "object.12345";

std::size_t allocationsOfFilling(std::size_t rooms, std::size_t idsInEach) {
    return allocationsOf([&] {
        VexIdSet ids;
        I18NString const text(id.c_str());
        for (std::size_t room = 0; room < rooms; ++room) {
            ids.reserveMore(idsInEach);
            for (std::size_t number = 0; number < idsInEach; ++number) {
                ids.insert(text);
            }
        }
    });
}

std::string setsOf(std::size_t sets, std::size_t idsInEach) {
    std::string text;
    for (std::size_t set = 0; set < sets; ++set) {
        text += "<set kind='included'>";
        for (std::size_t number = 0; number < idsInEach; ++number) {
            text += "<item>" + std::to_string(set * idsInEach + number) + "</item>";
        }
        text += "</set>";
    }
    return text;
}

} // namespace

// Each form that is freed by `delete`: a sanitizer would bring its own for the others.
void* operator new(std::size_t size, std::nothrow_t const& /*nothrow*/) noexcept {
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size) {
    if (void* const block = ::operator new(size, std::nothrow)) {
        return block;
    }
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::nothrow_t const& /*nothrow*/) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    std::free(block);
}

TEST(VexIdSetGrowth, RoomMadeForEachIdCostsHardlyMoreThanRoomMadeOnce) {
    constexpr std::size_t many = 10'000;
    std::size_t const once = allocationsOfFilling(1, many);
    EXPECT_LE(once, 10U);
    EXPECT_LE(allocationsOfFilling(many, 1), 60U); // three blocks, each doubled 14 times or so
}

TEST(VexIdSetGrowth, AListReadFromASetForEachIdMovesItselfOnlyAFewTimes) {
    constexpr std::size_t many = 2'000;
    auto const loading = [](std::size_t sets, std::size_t idsInEach) {
        EngineCase on("<securityView id='v'>" + setsOf(sets, idsInEach) + "</securityView>", {"v"});
        return allocationsOf([&] { EXPECT_TRUE(on.engine().IsIncluded("7", false)); });
    };
    std::size_t const once = loading(1, many);
    std::size_t const inSets = loading(many, 1);
    EXPECT_LE(inSets, once + 3 * many); // what the host allocates for each set
}
