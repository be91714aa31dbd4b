#include "KRLIDOM_OwnedDocument.h"
#include "KRLIDOM_Reader.h"
#include "tests/faults/FailingMemory.h"

#include <thread>

#include <gtest/gtest.h>
#include <malloc.h>

// What a thread keeps of documents that are gone.

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool isKept = false; // the sanitizer watches what is given back
#elif defined(__has_feature)
constexpr bool isKept = !__has_feature(address_sanitizer);
#else
constexpr bool isKept = true;
#endif

void makeDocument(std::size_t elements) {
    KRLIDOM_OwnedDocument const owner("root");
    KRLIDOM_Element const root = owner.document().getDocumentElement();
    for (std::size_t i = 0; i < elements; ++i) {
        KRLIDOM_Element const element = owner.document().createElement("element");
        element.setAttribute("name", "value");
        root.appendChild(element);
    }
}

long blocksBeside() {
    KRLIDOM_Reader::releaseParser();
    return failingMemory::liveBlocks();
}

// Which allocation of a new document would be its last one.
std::size_t allocationsOf(std::size_t elements) {
    for (std::size_t nth = 1;; ++nth) {
        failingMemory::Scope const failing(nth, failingMemory::Mode::Once);
        try {
            makeDocument(elements);
        } catch (std::exception const&) {
        }
        if (!failing.hasFailed()) {
            return nth - 1;
        }
    }
}

TEST(KeptMemory, OfADocumentServesTheNextOneOfTheThread) {
    if (!isKept) {
        GTEST_SKIP();
    }
    long const before = blocksBeside();
    makeDocument(5'000);
    EXPECT_GT(failingMemory::liveBlocks(), before);
    long const kept = failingMemory::liveBlocks();
    makeDocument(5'000);
    EXPECT_EQ(failingMemory::liveBlocks(), kept);
}

TEST(KeptMemory, IsGivenBackWithTheParser) {
    long const before = blocksBeside();
    makeDocument(5'000);
    EXPECT_EQ(blocksBeside(), before);
}

TEST(KeptMemory, IsBounded) {
    constexpr long blocks = 5 + 8; // 16 KB and on, doubled up to 512 KB: 4 MB
    long const before = blocksBeside();
    makeDocument(100'000);
    EXPECT_LE(failingMemory::liveBlocks(), before + blocks);
    makeDocument(100'000);
    EXPECT_LE(failingMemory::liveBlocks(), before + blocks);
    EXPECT_EQ(blocksBeside(), before);
}

TEST(KeptMemory, IsNoneOfADocumentThatFailed) {
    long const before = blocksBeside();
    EXPECT_GT(allocationsOf(2'000), 4U);
    EXPECT_EQ(blocksBeside(), before);
}

// What all threads together have taken more after `rounds` threads that each did it.
std::size_t leftBy(void (*work)(), int rounds) {
    auto const used = [] {
        struct mallinfo2 const info = ::mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    std::thread(work).join();
    std::size_t const before = used();
    for (int i = 0; i < rounds; ++i) {
        std::thread(work).join();
    }
    std::size_t const after = used();
    return after > before ? after - before : 0;
}

TEST(KeptMemory, GoesWithItsThread) {
    EXPECT_LT(leftBy([] { makeDocument(20'000); }, 20), 4U << 20U);
}

TEST(KeptMemory, IsNoneOfADocumentThatGoesWithItsThread) {
    auto const work = [] {
        static thread_local KRLIDOM_OwnedDocument goesLater;
        makeDocument(100);
        goesLater = KRLIDOM_OwnedDocument("root");
    };
    EXPECT_LT(leftBy(work, 100), 100U << 10U);
}

} // namespace
