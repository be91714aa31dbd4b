#include "tests/apps/vexma/SampleRun.h"

#include <sstream>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

TEST(TreeWithReasons, DrawsWhatIsLeftOutInBracketsWithTheReason) {
    ToolResult const result = runOnSample("tree", "carl", {"--why", "--start", "[Retail]"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr(R"(folder Retail
├── folder Shared
│   ├── querySubject Calendar
│   │   ├── queryItem Date
│   │   ├── queryItem Weekday
│   │   ├── queryItem Public Holiday
│   │   ├── [queryItemFolder Calendar Year  hidden: not among the included objects of the views in force (view.clerk Store Clerks)]
│   │   │   ├── queryItem Year
)"));
}

TEST(TreeWithReasons, ShowsExactlyWhatTheTreeShows) {
    auto const count = [](std::string const& text, bool leftOut) {
        std::istringstream lines(text);
        int found = 0;
        for (std::string line; std::getline(lines, line);) {
            found += (line.back() == ']' && line.find(" [") != std::string::npos &&
                      line.find("hidden: ") != std::string::npos) == leftOut
                         ? 1
                         : 0;
        }
        return found;
    };
    std::string const plain = runOnSample("tree", "carl").out;
    std::string const why = runOnSample("tree", "carl", {"--why"}).out;
    EXPECT_EQ(count(plain, true), 0);
    EXPECT_EQ(count(why, false), count(plain, false));
    EXPECT_EQ(count(why, true) + count(why, false), count(runOnSample("tree", "admin").out, false));
}

TEST(TreeWithReasons, NamesWhatHasNoNameById) {
    EXPECT_THAT(runOnSample("tree", "admin", {"--why", "--locale", "de"}).out,
                HasSubstr("[queryItem (qi.promotions.budget)  no name in de, so left out with all "
                          "its members]"));
}

TEST(TreeWithReasons, ShowsWhatTheTreeShowsFromAnyStart) {
    for (char const* const start :
         {"[Retail]", "[Sales].[Transactions].[Orders].[Channel]", "[Stock].[Sales at a Glance]",
          "[Sales].[Products Sold]", "[Stock].[Sales at a Glance].[Transactions]"}) {
        std::string const why = runOnSample("tree", "admin", {"--start", start, "--why"}).out;
        EXPECT_EQ(why, runOnSample("tree", "admin", {"--start", start}).out) << start;
        EXPECT_FALSE(why.empty());
    }
}

TEST(TreeWithReasons, EndsAtTheDepth) {
    EXPECT_EQ(runOnSample("tree", "carl", {"--why", "--start", "[Retail]", "--depth", "1"}).out,
              "folder Retail\n");
}

TEST(TreeWithReasons, EndsAtTheLimitOfElements) {
    ToolResult const result = runOnSample("tree", "carl", {"--why", "--max-elements", "20"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.error, HasSubstr("more than 20 elements"));
}

TEST(TreeWithReasons, TellsTheRuleThatCountsBehindAShortcutThatThePathLeadsThrough) {
    // There the included objects of views are not asked for.
    std::string const why =
        runOnSample("tree", "ann",
                    {"--why", "--start", "[Stock].[Sales at a Glance].[Transactions]"})
            .out;
    EXPECT_THAT(why, testing::Not(HasSubstr("not among the included objects")));
}

TEST(TreeWithReasons, IsRefusedTogetherWithOtherRequests) {
    EXPECT_EQ(runOnSample("tree", "carl", {"--why", "--property", "usage"}).status, 2);
    EXPECT_EQ(runOnSample("tree", "carl", {"--why", "--request", "r.xml"}).status, 2);
}

} // namespace
