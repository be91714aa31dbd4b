#include "fuzz/SessionCaseInput.h"

#include <gtest/gtest.h>

namespace {

using fuzz::mutatedSessionCase;
using fuzz::SessionCaseInput;

void expectParts(std::string const& input, std::string const& world, std::string const& session) {
    SessionCaseInput const parts = fuzz::splitSessionCase(input);
    EXPECT_EQ(parts.world, world);
    EXPECT_EQ(parts.session, session);
}

std::string bytes(std::initializer_list<char> units) {
    return {units};
}

TEST(SessionCaseInput, BeginsWithHowManyChoicesTheWorldHas) {
    expectParts(bytes({3, 0, 'w', 'o', 'r', 's', 't'}), "wor", "st");
    expectParts(bytes({0, 1}) + std::string(256, 'w') + "s", std::string(256, 'w'), "s");
    EXPECT_EQ(fuzz::joinSessionCase({"wor", "st"}), bytes({3, 0, 'w', 'o', 'r', 's', 't'}));
    EXPECT_EQ(fuzz::joinSessionCase({std::string(256, 'w'), "s"}),
              bytes({0, 1}) + std::string(256, 'w') + "s");
}

TEST(SessionCaseInput, IsAnyBytesAtAll) {
    expectParts("", "", "");
    expectParts(bytes({5}), "", "");
    expectParts(bytes({5, 0}), "", "");
    expectParts(bytes({5, 0, 'w'}), "w", "");
    expectParts(bytes({-1, -1, 'w', 'o'}), "wo", "");
}

TEST(SessionCaseInput, CutsAWorldThatIsTooLongForItsLength) {
    std::string const input = fuzz::joinSessionCase({std::string(70'000, 'w'), "s"});
    expectParts(input, std::string(65'535, 'w'), "s");
}

void cross(std::string& text, std::size_t most) {
    text = std::string(text.size() + 1, 'x').substr(0, most);
}

TEST(SessionCaseMutation, KeepsTheWorldFifteenTimesInSixteen) {
    std::string const input = bytes({2, 0, 'w', 'w', 's'});
    for (unsigned chance = 1; chance < 16; ++chance) {
        expectParts(mutatedSessionCase(input, 100, chance, cross), "ww", "xx");
    }
    expectParts(mutatedSessionCase(input, 100, 16, cross), "xxx", "s");
}

TEST(SessionCaseMutation, MakesPartsSmallFifteenTimesInSixteen) {
    std::string const sixteen(16, 'w');
    std::string const input = fuzz::joinSessionCase({sixteen, std::string(31, 's')});
    EXPECT_TRUE(fuzz::asksForAnySize(sixteen));
    unsigned const ofSession = 1;
    for (unsigned chance = 1; chance < 16; ++chance) {
        SessionCaseInput const parts = fuzz::splitSessionCase(
            mutatedSessionCase(input, 100, ofSession + 16 * chance + 256 * chance, cross));
        EXPECT_EQ(parts.world, std::string(15, 'w'));
        EXPECT_EQ(parts.session, std::string(31, 'x'));
    }
    expectParts(mutatedSessionCase(input, 100, ofSession, cross), sixteen, std::string(32, 'x'));
}

TEST(SessionCaseMutation, KeepsToTheLengthAllowed) {
    std::string const input = bytes({2, 0, 'w', 'w', 's'});
    expectParts(mutatedSessionCase(input, 5, 1, cross), "ww", "x");
    expectParts(mutatedSessionCase(input, 6, 1, cross), "ww", "xx");
    EXPECT_EQ(mutatedSessionCase(input, 4, 1, cross).size(), 4U);
    EXPECT_EQ(mutatedSessionCase(input, 1, 0, cross).size(), 1U);
}

} // namespace
