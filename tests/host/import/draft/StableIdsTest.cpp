#include "host/import/draft/StableIds.h"

#include "host/import/draft/ModelDraft.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

std::vector<std::string> idsOf(std::vector<vex::DraftKey> const& keys) {
    std::vector<vex::DraftKey const*> all;
    for (vex::DraftKey const& key : keys) {
        all.push_back(&key);
    }
    return vex::stableIds(all);
}

TEST(StableIds, AreMadeOfKindAndPath) {
    EXPECT_THAT(idsOf({{"table", "[Orders]"}, {"column", "[Orders].[Total]"}, {"model"}}),
                ElementsAre("table:[Orders]", "column:[Orders].[Total]", "model"));
}

TEST(StableIds, PreferWhatTheSourceItselfKnowsAThingBy) {
    EXPECT_THAT(idsOf({{"table", "[Orders]", "5f0c-1"}}), ElementsAre("table:5f0c-1"));
}

TEST(StableIds, ATagThatTwoThingsHaveIsNeithers) {
    EXPECT_THAT(idsOf({{"table", "[A]", "x"}, {"table", "[B]", "x"}, {"column", "[A]", "x"}}),
                ElementsAre("table:[A]", "table:[B]", "column:x"));
}

TEST(StableIds, ATagThatCouldPassForAPathIsNone) {
    EXPECT_THAT(idsOf({{"table", "[A]", "[B]"}, {"table", "[B]", " b "}}),
                ElementsAre("table:[A]", "table:[B]"));
}

TEST(StableIds, NumberWhatHasOnePathFromTheSecondOn) {
    EXPECT_THAT(idsOf({{"t", "[A]"}, {"t", "[A]"}, {"t", "[A]"}, {"t", "[A]~2"}}),
                ElementsAre("t:[A]", "t:[A]~2", "t:[A]~3", "t:[A]~2~2"));
}

TEST(StableIds, CutALongPathAndStillTellItFromAnother) {
    std::string const longName(1'000, 'x');
    auto const ids = idsOf({{"t", longName + "a"}, {"t", longName + "b"}});
    EXPECT_LT(ids[0].size(), 350U);
    EXPECT_NE(ids[0], ids[1]);
    EXPECT_EQ(ids, idsOf({{"t", longName + "a"}, {"t", longName + "b"}}));
}

TEST(StableIds, PathsOfNamesWithBracketsDiffer) {
    std::string one;
    vex::appendToPath(one, "a].[b");
    std::string two;
    vex::appendToPath(two, "a");
    vex::appendToPath(two, "b");
    EXPECT_EQ(one, "[a]].[b]");
    EXPECT_EQ(two, "[a].[b]");
}

} // namespace
