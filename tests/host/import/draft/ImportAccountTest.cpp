#include "host/import/draft/ImportAccount.h"

#include <gtest/gtest.h>

namespace {

TEST(ImportAccount, CountsWhatWasReadAsMappedOrLeftOut) {
    vex::ImportAccount account;
    account.mapped("table");
    account.mapped("table", 2);
    account.leftOut("table", "it is no table", {"T", {3, 4}});
    EXPECT_EQ(account.readOf("table"), 4U);
    EXPECT_EQ(account.mappedOf("table"), 3U);
    EXPECT_EQ(account.readOf("column"), 0U);
}

TEST(ImportAccount, GathersWhatWasLeftOutByReasonAndKeepsTheFirstPlaces) {
    vex::ImportAccount account;
    for (unsigned long line = 1; line <= 20; ++line) {
        account.leftOut("note", "of tools", {"n", {line, 1}});
    }
    account.leftOut("note", "empty", {"m", {}});
    ASSERT_EQ(account.omissions().size(), 2U);
    EXPECT_EQ(account.omissions()[0].count, 20U);
    ASSERT_EQ(account.omissions()[0].places.size(), vex::ImportAccount::MostPlaces);
    EXPECT_EQ(account.omissions()[0].places.back().position.line, 10U);
    EXPECT_EQ(account.omissions()[1].reason, "empty");
}

TEST(ImportAccount, GrowsNoFurtherThanItsKindsWhateverASourceMakesUp) {
    vex::ImportAccount account;
    account.mapped("table");
    for (std::size_t number = 1; number < vex::ImportAccount::MostKinds + 5; ++number) {
        account.leftOut("key " + std::to_string(number), "unknown", {});
    }
    account.mapped("table");
    EXPECT_EQ(account.rows().size(), vex::ImportAccount::MostKinds + 1);
    EXPECT_EQ(account.readOf("other kinds"), 5U);
    EXPECT_EQ(account.omissions().back().count, 5U);
    EXPECT_EQ(account.mappedOf("table"), 2U);
}

} // namespace
