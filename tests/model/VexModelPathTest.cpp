#include "model/VexModelPath.h"

#include "resources.h"

#include <gtest/gtest.h>

// covers quirk: path-mark-cut-by-count
TEST(VexModelPath, AMarkedPathLosesItsFirstFiveCharactersAndCountsAsContent) {
    VexModelPath const path = ReadModelPath("path:/elsewhere/retail");
    EXPECT_EQ(path.path, "/elsewhere/retail");
    EXPECT_FALSE(path.outsideContent);
}

TEST(VexModelPath, TheMarkHasTheFiveCharactersThatAreCutOff) {
    EXPECT_EQ(resources::getString(126), "path:");
    EXPECT_EQ(ReadModelPath("path:").path, "");
    EXPECT_EQ(ReadModelPath("path:path:x").path, "path:x");
}

TEST(VexModelPath, AContentPathStaysAsItIs) {
    VexModelPath const path = ReadModelPath("/content/retail");
    EXPECT_EQ(path.path, "/content/retail");
    EXPECT_FALSE(path.outsideContent);
}

TEST(VexModelPath, TheContentRootAloneCountsAsContent) {
    EXPECT_FALSE(ReadModelPath("/content/").outsideContent);
    EXPECT_TRUE(ReadModelPath("/content").outsideContent);
}

TEST(VexModelPath, AnyOtherPathStandsOutsideTheContentAndStaysAsItIs) {
    for (char const* const text : {"/public/retail", "", "content/retail", "/Content/retail",
                                   " /content/retail", "/contents/retail", "PATH:/content/x"}) {
        VexModelPath const path = ReadModelPath(text);
        EXPECT_EQ(path.path, text);
        EXPECT_TRUE(path.outsideContent) << text;
    }
}

TEST(VexModelPath, AMarkThatStandsLaterIsNoMark) {
    VexModelPath const path = ReadModelPath("/retail/path:x");
    EXPECT_EQ(path.path, "/retail/path:x");
    EXPECT_TRUE(path.outsideContent);
    EXPECT_FALSE(ReadModelPath("/content/path:x").outsideContent);
    EXPECT_EQ(ReadModelPath("/content/path:x").path, "/content/path:x");
}
