#include "security/VexIdSet.h"

#include "tests/support/AlikeNames.h"

#include <cstdint>
#include <set>
#include <string>

#include <gtest/gtest.h>

TEST(VexIdSet, AnEmptySetContainsNothing) {
    VexIdSet const ids;
    EXPECT_FALSE(ids.contains(""));
    EXPECT_FALSE(ids.contains("a"));
    EXPECT_TRUE(ids.empty());
}

TEST(VexIdSet, ContainsWhatWasInserted) {
    VexIdSet ids;
    ids.insert("a");
    ids.insert("b");
    EXPECT_TRUE(ids.contains("a"));
    EXPECT_TRUE(ids.contains("b"));
    EXPECT_FALSE(ids.contains("c"));
    EXPECT_FALSE(ids.contains("ab"));
}

TEST(VexIdSet, TakesAnIdThatIsThereAlready) {
    VexIdSet ids;
    ids.insert("a");
    ids.insert("a");
    EXPECT_TRUE(ids.contains("a"));
    EXPECT_FALSE(ids.contains("b"));
}

TEST(VexIdSet, TheEmptyIdIsAnIdLikeAnyOther) {
    VexIdSet ids;
    ids.insert("");
    EXPECT_TRUE(ids.contains(""));
    EXPECT_FALSE(ids.contains("a"));
}

TEST(VexIdSet, TellsIdsApartByCaseLengthAndEveryCodeUnit) {
    VexIdSet ids;
    ids.insert("abcdefgh");
    for (char const* const other :
         {"Abcdefgh", "abcdefgH", "abcdefg", "abcdefghi", "hgfedcba", "abcdabcd", " abcdefgh"}) {
        EXPECT_FALSE(ids.contains(other)) << other;
    }
    ids.insert(I18NString(u"a\0", 2));
    EXPECT_TRUE(ids.contains(I18NString(u"a\0", 2)));
    EXPECT_FALSE(ids.contains("a"));
}

TEST(VexIdSet, HoldsTextOutsideTheBasicPlane) {
    VexIdSet ids;
    ids.insert(I18NString(u"\U0001F600"));
    EXPECT_TRUE(ids.contains(I18NString(u"\U0001F600")));
    EXPECT_FALSE(ids.contains(I18NString(u"\U0001F601")));
}

TEST(VexIdSet, AgreesWithAnOrderedSetWhileItGrows) {
    VexIdSet ids;
    std::set<std::string> plain;
    for (int number = 0; number < 3000; ++number) {
        std::string const id = "id" + std::to_string(number * 7919 % 2000);
        ids.insert(id.c_str());
        plain.insert(id);
    }
    for (int number = 0; number < 4000; ++number) {
        std::string const id = "id" + std::to_string(number);
        EXPECT_EQ(ids.contains(id.c_str()), plain.contains(id)) << id;
    }
}

TEST(VexIdSet, AnswersTheFirstQuestionAsTheHundredth) {
    VexIdSet ids;
    for (int number = 0; number < 1000; ++number) {
        ids.insert(std::to_string(number).c_str());
    }
    for (int question = 0; question < 100; ++question) {
        EXPECT_TRUE(ids.contains("999"));
        EXPECT_TRUE(ids.contains("0"));
        EXPECT_FALSE(ids.contains("1000"));
    }
}

TEST(VexIdSet, MakingRoomChangesNothing) {
    VexIdSet ids;
    ids.reserveMore(0);
    EXPECT_FALSE(ids.contains("a"));
    ids.insert("a");
    ids.reserveMore(1000);
    ids.reserveMore(1);
    EXPECT_TRUE(ids.contains("a"));
    EXPECT_FALSE(ids.contains("b"));
}

TEST(VexIdSet, FindsEveryIdBesideOneThatIsThereManyTimes) {
    VexIdSet ids;
    for (int number = 0; number < 50'000; ++number) {
        ids.insert("again");
    }
    for (int number = 0; number < 100; ++number) {
        ids.insert(std::to_string(number).c_str());
    }
    for (int question = 0; question < 100; ++question) {
        EXPECT_TRUE(ids.contains("again"));
        EXPECT_TRUE(ids.contains(std::to_string(question).c_str()));
        EXPECT_FALSE(ids.contains("100"));
    }
}

TEST(VexIdSet, IdsThatWereChosenToHashAlikeStandInNobodysWay) {
    VexIdSet ids;
    for (std::uint64_t number = 1; number <= 20'000; ++number) {
        ids.insert(alikeId(number));
    }
    EXPECT_EQ(ids.longestSearch(), 0U); // no table yet
    for (int question = 0; question < 100; ++question) {
        EXPECT_TRUE(ids.contains(I18NString(alikeId(20'000))));
        EXPECT_FALSE(ids.contains(I18NString(alikeId(20'001))));
    }
    EXPECT_GE(ids.longestSearch(), 1U);
    EXPECT_LE(ids.longestSearch(), 200U); // of 20,000
}
