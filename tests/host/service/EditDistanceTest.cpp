#include "host/service/EditDistance.h"

#include "host/store/image/Budget.h"

#include <gtest/gtest.h>

namespace {

TEST(EditDistance, CountsLettersPutInLeftOutAndExchanged) {
    EXPECT_EQ(vex::editDistance(u"orders", u"orders", 3), 0U);
    EXPECT_EQ(vex::editDistance(u"orders", u"order", 3), 1U);
    EXPECT_EQ(vex::editDistance(u"orders", u"borders", 3), 1U);
    EXPECT_EQ(vex::editDistance(u"orders", u"ordres", 3), 2U);
    EXPECT_EQ(vex::editDistance(u"", u"abc", 3), 3U);
}

TEST(EditDistance, TakesUpperAndLowerCaseAsTheSame) {
    EXPECT_EQ(vex::editDistance(u"ORDERS \u00C4", u"orders \u00E4", 3), 0U);
}

TEST(EditDistance, StopsPastItsLimit) {
    EXPECT_EQ(vex::editDistance(u"abcdefgh", u"ijklmnop", 3), 4U);
    EXPECT_EQ(vex::editDistance(u"a", u"abcdefgh", 3), 4U);
}

TEST(EditDistance, TakesWorkByTheLimitAndNotByTheSquareOfTheLength) {
    std::u16string const text(30'000, u'x');
    std::u16string other = text;
    other[15'000] = u'y';
    vex::Budget const budget({});
    EXPECT_EQ(vex::editDistance(text, other, 3), 1U);
    EXPECT_LT(budget.stepsDone(), 40'000U);
}

TEST(EditDistance, LooksAtNothingOfTextsWhoseLengthsTellThatTheyAreTooFar) {
    vex::Budget const budget({});
    EXPECT_EQ(vex::editDistance(std::u16string(30'000, u'x'), u"orders", 3), 4U);
    EXPECT_EQ(budget.stepsDone(), 0U);
}

} // namespace
