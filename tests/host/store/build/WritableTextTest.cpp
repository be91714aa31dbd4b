#include "host/store/build/WritableText.h"

#include <string>

#include <gmock/gmock.h>

namespace {

using vex::findUnwritable;

constexpr std::size_t nowhere = std::u16string_view::npos;

TEST(WritableText, FindsTheFirstUnitWhereverItStands) {
    for (std::size_t length = 1; length < 20; ++length) {
        for (std::size_t at = 0; at < length; ++at) {
            std::u16string text(length, u'a');
            for (char16_t const unit : {u'\u0001', u'\u001F', u'\uFFFE', u'\uFFFF'}) {
                text[at] = unit;
                EXPECT_EQ(findUnwritable(text), at) << length;
            }
            for (int const unit : {0, 0xD800, 0xDBFF, 0xDC00, 0xDFFF}) {
                text[at] = static_cast<char16_t>(unit);
                EXPECT_EQ(findUnwritable(text), at) << length;
            }
        }
    }
}

TEST(WritableText, TakesEveryUnitThatXmlHasAPlaceFor) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        bool const isWritable = unit == 9 || unit == 10 || unit == 13 ||
                                (unit >= 0x20 && unit < 0xD800) ||
                                (unit >= 0xE000 && unit <= 0xFFFD);
        std::u16string const text = u"name" + std::u16string(1, static_cast<char16_t>(unit)) + u"s";
        EXPECT_EQ(findUnwritable(text), isWritable ? nowhere : 4U) << unit;
    }
}

TEST(WritableText, TakesWholePairsAtEveryPlace) {
    for (std::size_t before = 0; before < 9; ++before) {
        std::u16string const text = std::u16string(before, u'a') + u"\U0001F600\U0010FFFDb";
        EXPECT_EQ(findUnwritable(text), nowhere);
        EXPECT_EQ(findUnwritable(text.substr(0, before + 3)), before + 2);
        EXPECT_EQ(findUnwritable(text.substr(0, before) + text.substr(before + 1)), before);
    }
}

} // namespace
