#include "I18NStringIterator.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

std::u32string walk(I18NString const& text) {
    std::u32string found;
    for (I18NStringIterator at(text); at.hasNext();) {
        EXPECT_EQ(at.peek(), at.peek());
        char32_t const ahead = at.peek();
        EXPECT_EQ(at.next(), ahead);
        found += ahead;
    }
    return found;
}

TEST(I18NStringIterator, WalksByCodePoint) {
    EXPECT_EQ(walk(I18NString(u"a\u00E4\U0001F600z")), U"a\u00E4\U0001F600z");
    EXPECT_EQ(walk(I18NString()), U"");
}

TEST(I18NStringIterator, TakesAnUnpairedSurrogateAsACodePoint) {
    std::u32string const alone{U'a', char32_t{0xD83D}, U'b', char32_t{0xDE00}};
    char16_t const units[] = {u'a', 0xD83D, u'b', 0xDE00};
    EXPECT_EQ(walk(I18NString(units, 4)), alone);
    char16_t const atEnd[] = {0xD83D};
    EXPECT_EQ(walk(I18NString(atEnd, 1)), std::u32string(1, char32_t{0xD83D}));
}

TEST(I18NStringIterator, GivesZeroAtTheEnd) {
    I18NString const text("a");
    I18NStringIterator at(text);
    at.next();
    EXPECT_FALSE(at.hasNext());
    EXPECT_EQ(at.peek(), 0U);
    EXPECT_EQ(at.next(), 0U);
}

TEST(I18NCodePointIsWhitespace, HoldsForUnicodeWhiteSpaceOnly) {
    std::vector<char32_t> found;
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (I18NCodePointIsWhitespace(c)) {
            found.push_back(c);
        }
    }
    std::vector<char32_t> const whiteSpace{0x09,   0x0A,   0x0B,   0x0C,   0x0D,   0x20,   0x85,
                                           0xA0,   0x1680, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004,
                                           0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x2028,
                                           0x2029, 0x202F, 0x205F, 0x3000};
    EXPECT_EQ(found, whiteSpace);
}

} // namespace
