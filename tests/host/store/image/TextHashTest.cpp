#include "host/store/image/TextHash.h"

#include <gtest/gtest.h>

namespace {

// The products, written out: 0xFFFFFFFFFFFFFFFF squared is
// 0xFFFFFFFFFFFFFFFE'0000000000000001.
TEST(TextHash, FoldsAProductOfAnySize) {
    for (auto const fold : {&vex::foldedProduct, &vex::foldedProductOfHalves}) {
        EXPECT_EQ(fold(0, 7), 0U);
        EXPECT_EQ(fold(3, 5), 15U);
        EXPECT_EQ(fold(0xFFFF'FFFF'FFFF'FFFF, 0xFFFF'FFFF'FFFF'FFFF), 0xFFFF'FFFF'FFFF'FFFFU);
        EXPECT_EQ(fold(0x1'0000'0000, 0x1'0000'0000), 1U);
        EXPECT_EQ(fold(0x8000'0000'0000'0000, 6), 3U);
        EXPECT_EQ(fold(0xFFFF'FFFF'FFFF'FFFF, 2), 0xFFFF'FFFF'FFFF'FFFFU);
    }
}

TEST(TextHash, FoldsAlikeOnEveryMachine) {
    std::uint64_t number = 1;
    for (int round = 0; round < 10'000; ++round) {
        constexpr std::uint64_t factor = 0x5851'F42D'4C95'7F2D; // goes through all odd numbers
        std::uint64_t const other = number * factor;
        ASSERT_EQ(vex::foldedProduct(number, other), vex::foldedProductOfHalves(number, other));
        number = other + 2;
    }
}

TEST(TextHash, TellsTextsOfAllLengthsApart) {
    std::u16string text;
    std::uint64_t before = vex::hashText(text, 1);
    for (int length = 1; length < 40; ++length) {
        text += u'a';
        std::uint64_t const hash = vex::hashText(text, 1);
        EXPECT_NE(hash, before) << length;
        before = hash;
        for (char16_t& unit : text) { // every unit counts
            unit = u'b';
            EXPECT_NE(vex::hashText(text, 1), hash) << length;
            unit = u'a';
        }
    }
}

} // namespace
