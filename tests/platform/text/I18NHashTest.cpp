#include "I18NHash.h"

#include "I18NString.h"

#include <functional>
#include <set>
#include <string>
#include <unordered_set>

#include <gtest/gtest.h>

namespace {

// The products, written out: 0xFFFFFFFFFFFFFFFF squared is
// 0xFFFFFFFFFFFFFFFE'0000000000000001.
TEST(I18NHash, FoldsAProductOfAnySize) {
    for (auto const fold : {&I18NFoldedProduct, &I18NFoldedProductOfHalves}) {
        EXPECT_EQ(fold(0, 7), 0U);
        EXPECT_EQ(fold(3, 5), 15U);
        EXPECT_EQ(fold(0xFFFF'FFFF'FFFF'FFFF, 0xFFFF'FFFF'FFFF'FFFF), 0xFFFF'FFFF'FFFF'FFFFU);
        EXPECT_EQ(fold(0x1'0000'0000, 0x1'0000'0000), 1U);
        EXPECT_EQ(fold(0x8000'0000'0000'0000, 6), 3U);
        EXPECT_EQ(fold(0xFFFF'FFFF'FFFF'FFFF, 2), 0xFFFF'FFFF'FFFF'FFFFU);
    }
}

TEST(I18NHash, FoldsAlikeOnEveryMachine) {
    std::uint64_t number = 1;
    for (int round = 0; round < 10'000; ++round) {
        constexpr std::uint64_t factor = 0x5851'F42D'4C95'7F2D; // goes through all odd numbers
        std::uint64_t const other = number * factor;
        ASSERT_EQ(I18NFoldedProduct(number, other), I18NFoldedProductOfHalves(number, other));
        number = other + 2;
    }
}

TEST(I18NHash, TellsTextsOfAllLengthsApart) {
    std::u16string text;
    std::uint64_t before = I18NHashText(std::u16string_view(text), 1);
    for (int length = 1; length < 40; ++length) {
        text += u'a';
        std::uint64_t const hash = I18NHashText(text, 1);
        EXPECT_NE(hash, before) << length;
        before = hash;
        for (char16_t& unit : text) { // every unit counts
            unit = u'b';
            EXPECT_NE(I18NHashText(text, 1), hash) << length;
            unit = u'a';
        }
    }
}

TEST(I18NHash, TellsUtf8OfAllLengthsApart) {
    std::set<std::uint64_t> hashes{I18NHashText(std::string_view(), 1)};
    std::string text;
    for (int length = 1; length < 40; ++length) {
        text += 'a';
        EXPECT_TRUE(hashes.insert(I18NHashText(std::string_view(text), 1)).second) << length;
        for (char& unit : text) {
            unit = 'b';
            EXPECT_TRUE(hashes.insert(I18NHashText(std::string_view(text), 1)).second) << length;
            unit = 'a';
        }
    }
}

TEST(I18NHash, IsAnotherWithAnotherSeed) {
    for (std::u16string_view const text :
         {u"", u"a", u"name", u"securityView", u"0123456789abcdefg"}) {
        EXPECT_NE(I18NHashText(text, 1), I18NHashText(text, 2));
        EXPECT_NE(I18NHashText(text, 1), I18NHashText(text, 0x8000'0000'0000'0001));
    }
}

TEST(I18NHash, TheSeedIsTheSameForTheWholeProcess) {
    EXPECT_EQ(I18NHashSeed(), I18NHashSeed());
    EXPECT_EQ(I18NTextHasher{}(u"name"), I18NHashText(u"name", I18NHashSeed()));
    EXPECT_EQ(std::hash<I18NString>{}(I18NString("name")), I18NTextHasher{}(u"name"));
}

// Four units that are a constant of a hash would make each product behind them 0, whatever
// stands before, if the seed did not hide the constant.
TEST(I18NHash, NoUnitsMakeWhatStandsBeforeThemCountForNothing) {
    constexpr std::uint64_t constants[] = {0xE703'7ED1'A0B4'28DB, 0xA076'1D64'78BD'642F,
                                           0x9E37'79B9'7F4A'7C15, 0};
    for (std::uint64_t const constant : constants) {
        std::u16string word(4, u'\0');
        std::memcpy(word.data(), &constant, sizeof constant);
        std::set<std::uint64_t> hashes;
        for (char16_t first = u'a'; first < u'a' + 1'000; ++first) {
            for (std::u16string const& text : {std::u16string(4, first) + word + u"01234567",
                                               word + std::u16string(4, first) + u"01234567"}) {
                hashes.insert(I18NHashText(std::u16string_view(text), I18NHashSeed()));
            }
        }
        EXPECT_GE(hashes.size(), 1'999U);
    }
}

// A "b" and an "a" beside each other weigh as much as an "a" and what lies 38 behind it, a
// well-known weakness of hashes that multiply and add.
TEST(I18NHash, TextsThatWeighTheSameLieInBucketsOfTheirOwn) {
    constexpr unsigned pairs = 12;
    std::unordered_set<I18NString> texts;
    std::unordered_set<std::string, I18NTextHasher, std::equal_to<>> utf8;
    for (unsigned number = 0; number < 1U << pairs; ++number) {
        std::string text;
        for (unsigned pair = 0; pair < pairs; ++pair) {
            text += (number >> pair & 1U) == 0 ? "ba" : "a\x87";
        }
        utf8.insert(text);
        texts.insert(I18NString(std::u16string(text.begin(), text.end())));
    }
    ASSERT_EQ(utf8.size(), 1U << pairs);
    for (std::size_t bucket = 0; bucket < utf8.bucket_count(); ++bucket) {
        EXPECT_LE(utf8.bucket_size(bucket), 12U);
    }
    for (std::size_t bucket = 0; bucket < texts.bucket_count(); ++bucket) {
        EXPECT_LE(texts.bucket_size(bucket), 12U);
    }
}

} // namespace
