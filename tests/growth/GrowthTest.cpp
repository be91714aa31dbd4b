#include "tests/growth/Growth.h"

#include "I18NString.h"

#include <memory>
#include <new>

namespace {

void search(I18NString const& text, std::size_t times) {
    for (std::size_t number = 0; number < times; ++number) {
        EXPECT_EQ(text.find(u'b'), -1);
    }
}

I18NString textOf(std::size_t length) {
    return I18NString(std::u16string(length, u'a'));
}

TEST(Growth, IsInProportionWhenEachObjectTakesTheSame) {
    EXPECT_TRUE(staysInProportion(1'000, [](std::size_t size) {
        I18NString const text = textOf(1'000);
        return countWork(size, [&] { search(text, size); });
    }));
}

TEST(Growth, IsTooMuchWhenEachObjectIsComparedWithEach) {
    auto const squared = staysInProportion(1'000, [](std::size_t size) {
        I18NString const text = textOf(size);
        return countWork(size, [&] { search(text, size); });
    });
    EXPECT_FALSE(squared);
    EXPECT_NE(std::string(squared.message()).find("steps for each object grow 1.99"),
              std::string::npos)
        << squared.message();
}

TEST(Growth, IsTooMuchWhenMemoryIsHeldThatTheInputDoesNotExplain) {
    constexpr std::size_t tooMuch = 21;
    auto const held = staysInProportion(1'000, [](std::size_t size) {
        return countWork(size, [&] { std::make_unique<char[]>(tooMuch * size); });
    });
    EXPECT_FALSE(held);
    EXPECT_NE(std::string(held.message()).find("bytes at once for each byte of input"),
              std::string::npos)
        << held.message();
}

TEST(Growth, CountsEveryFormOfAllocation) {
    Counts const before = countsNow();
    struct alignas(64) Aligned {
        char bytes[64];
    };
    delete new Aligned;
    delete[] new char[7];
    ::operator delete(::operator new(7, std::nothrow), std::nothrow);
    Counts const after = countsNow();
    EXPECT_EQ(after.allocations - before.allocations, 3U);
    EXPECT_GE(after.bytes - before.bytes, 64U + 7U + 7U);
    EXPECT_EQ(after.held, before.held);
}

TEST(Growth, OfACommandIsThatOfAProgramOfItsOwn) {
    CommandFolder const folder;
    std::size_t const bytes = folder.write("m.xml", "<model defaultLocale='en'/>");
    Measurement const measured = folder.countCommand(bytes, {"validate", "m.xml"});
    EXPECT_EQ(folder.read("error"), "");
    EXPECT_GT(measured.counts.steps, 1'000U);
    EXPECT_GT(measured.counts.allocations, 100U);
    EXPECT_GT(measured.counts.peak, bytes);
}

} // namespace
