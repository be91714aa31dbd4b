#include "host/import/database/DatabaseFilter.h"

#include "host/import/draft/ImportWork.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using vex::DatabaseFilter;
using vex::matchesGlob;

TEST(Glob, StarsStandForAnythingQuestionMarksForACharacter) {
    EXPECT_TRUE(matchesGlob("a*c", "abbc"));
    EXPECT_TRUE(matchesGlob("a*", "a"));
    EXPECT_TRUE(matchesGlob("*b*b", "abbab"));
    EXPECT_TRUE(matchesGlob("?", "店"));
    EXPECT_FALSE(matchesGlob("??", "店"));
    EXPECT_FALSE(matchesGlob("a?", "a"));
    EXPECT_FALSE(matchesGlob("A", "a"));
    EXPECT_FALSE(matchesGlob("", "a"));
    EXPECT_TRUE(matchesGlob("a[b]", "a[b]"));
}

vex::ImportRequest requestWith(std::map<std::string, std::vector<std::string>> options) {
    vex::ImportRequest request;
    request.source = "source";
    request.options = std::move(options);
    return request;
}

TEST(DatabaseFilter, WantsEverythingWhenNothingIsAskedFor) {
    vex::ImportWork work(requestWith({}));
    DatabaseFilter filter(work);
    EXPECT_TRUE(filter.wantsSchema("a"));
    EXPECT_TRUE(filter.wantsTable("a", "b"));
}

TEST(DatabaseFilter, TakesNamesOfTablesWithAndWithoutTheirSchemas) {
    vex::ImportWork work(requestWith({{"include", {"a.*", "t?"}}, {"exclude", {"*.t2", "x"}}}));
    DatabaseFilter filter(work);
    EXPECT_TRUE(filter.wantsTable("a", "anything"));
    EXPECT_TRUE(filter.wantsTable("b", "t1"));
    EXPECT_FALSE(filter.wantsTable("b", "t2"));
    EXPECT_FALSE(filter.wantsTable("a", "x"));
    EXPECT_FALSE(filter.wantsTable("b", "other"));
}

TEST(DatabaseFilter, RefusesANameThatNothingBearsAndTellsOfPatternsThatMatchNothing) {
    vex::ImportWork work(requestWith({{"schema", {"a"}}, {"exclude", {"tmp*", "secert"}}}));
    DatabaseFilter filter(work);
    filter.wantsSchema("a");
    filter.wantsTable("a", "secret");
    EXPECT_THROW(filter.tellUnmatched(), vex::SourceReport::Stop);
    EXPECT_THAT(work.found.front().text, HasSubstr("--exclude \"secert\" matches no table"));
    ASSERT_EQ(work.account.notes().size(), 1U);
    EXPECT_EQ(work.account.notes().front().text, "--exclude \"tmp*\" matches no table");
}

} // namespace
