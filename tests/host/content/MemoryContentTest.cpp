#include "host/content/MemoryContent.h"

#include "host/store/image/HostException.h"
#include "tests/host/service/SmallModel.h"

#include <gtest/gtest.h>

namespace {

TEST(MemoryContent, GivesTheModelThatWasSetLast) {
    vex::MemoryContent content;
    auto const first = content.setModel("a", smallModel());
    EXPECT_EQ(content.getModel("a"), first);
    auto const second = content.setModel("a", smallModel());
    EXPECT_EQ(content.getModel("a"), second);
    EXPECT_EQ(content.reloadModel("a"), second);
    EXPECT_FALSE(first->isNewest());
    EXPECT_NE(first->stamp(), second->stamp());
}

TEST(MemoryContent, KeepsModelsApartByTheirPath) {
    vex::MemoryContent content;
    auto const first = content.setModel("a", smallModel());
    content.setModel("b", smallModel());
    EXPECT_EQ(content.getModel("a"), first);
    EXPECT_TRUE(first->isNewest());
}

TEST(MemoryContent, NamesTheKnownModelPathsWhenOneIsUnknown) {
    vex::MemoryContent content;
    content.setModel("b", smallModel());
    content.setModel("a", smallModel());
    try {
        content.getModel("c");
        FAIL() << "nothing was raised";
    } catch (vex::HostException const& problem) {
        EXPECT_STREQ(problem.what(), "unknown model path \"c\"; the catalogue has \"a\", \"b\"");
    }
}

} // namespace
