#include "host/insight/NearestWord.h"

#include <gtest/gtest.h>

namespace {

std::string meant(char const* word, std::vector<std::string_view> const& known) {
    return vex::nearestWord(std::string(word), known);
}

TEST(NearestWord, IsTheOneWithFewestSlips) {
    EXPECT_EQ(meant("querySubjct", {"queryItem", "querySubject"}), "querySubject");
    EXPECT_EQ(meant("usgae", {"name", "usage"}), "usage");
    EXPECT_EQ(meant("facts", {"fact"}), "fact");
}

TEST(NearestWord, MayDifferByItsCaseAlone) {
    EXPECT_EQ(meant("screentip", {"screenTip"}), "screenTip");
    EXPECT_EQ(meant("ID", {"id"}), "id");
}

TEST(NearestWord, IsNoneForAWordThatIsKnown) {
    EXPECT_EQ(meant("name", {"names", "name"}), "");
}

TEST(NearestWord, IsNoneForAWordThatIsFarFromAll) {
    EXPECT_EQ(meant("colour", {"name", "usage", "expression"}), "");
}

TEST(NearestWord, IsNoneWhenAWrongLetterMakesAnotherShortWord) {
    EXPECT_EQ(meant("rule", {"role"}), "");
    EXPECT_EQ(meant("mind", {"kind"}), "");
    EXPECT_EQ(meant("if", {"id"}), "");
    EXPECT_EQ(meant("seat", {"set"}), "");
}

TEST(NearestWord, ForgivesAnExchangeInAShortWord) {
    EXPECT_EQ(meant("nmae", {"name"}), "name");
    EXPECT_EQ(meant("nam", {"name"}), "name");
}

TEST(NearestWord, IsNoneForATextThatNobodyTyped) {
    std::string const longText(1'000, 'a');
    EXPECT_EQ(vex::slipsBetween(I18NString::fromUtf8(longText).view(),
                                I18NString::fromUtf8(longText + "b").view()),
              std::nullopt);
}

TEST(NearestWord, IsAskedForInAQuestion) {
    EXPECT_EQ(vex::didYouMean("name"), "; did you mean name?");
    EXPECT_EQ(vex::didYouMean(""), "");
}

} // namespace
