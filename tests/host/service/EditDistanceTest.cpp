#include "host/service/EditDistance.h"

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

} // namespace
