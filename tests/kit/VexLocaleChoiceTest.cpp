#include "VexLocaleChoice.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

using Found = std::optional<std::size_t>;

std::vector<I18NLocale> locales(std::initializer_list<char const*> names) {
    std::vector<I18NLocale> made;
    for (char const* const name : names) {
        made.push_back(I18NLocale(name));
    }
    return made;
}

Found choose(std::initializer_list<char const*> values, char const* wanted) {
    I18NLocale const locale(wanted);
    return VexChooseValue(locales(values), &locale, I18NLocale("en"));
}

Found chooseForNull(std::initializer_list<char const*> values) {
    return VexChooseValue(locales(values), nullptr, I18NLocale("en"));
}

TEST(LocaleChoice, TakesTheValueOfTheLocaleThenOfItsParentsThenTheUnlocalisedOne) {
    EXPECT_EQ(choose({"", "de", "de_AT"}, "de_AT"), Found(2));
    EXPECT_EQ(choose({"", "de", "en"}, "de_AT"), Found(1));
    EXPECT_EQ(choose({"en", "", "de"}, "fr"), Found(1));
    EXPECT_EQ(choose({"de_AT", "en"}, "de"), Found());
    EXPECT_EQ(choose({}, "de"), Found());
}

TEST(LocaleChoice, DoesNotFallBackToTheModelsLanguage) {
    EXPECT_EQ(choose({"en"}, "de"), Found());
}

TEST(LocaleChoice, TakesForNullTheUnlocalisedThenTheDefaultThenTheFirst) {
    EXPECT_EQ(chooseForNull({"de", "en", ""}), Found(2));
    EXPECT_EQ(chooseForNull({"de", "en"}), Found(1));
    EXPECT_EQ(chooseForNull({"fr", "de"}), Found(0));
    EXPECT_EQ(chooseForNull({}), Found());
}

TEST(LocaleChoice, TakesTheFirstOfTwoThatFit) {
    EXPECT_EQ(choose({"", ""}, "de"), Found(0));
}

TEST(LocaleChoice, AnswersInTheLanguageAskedForWhenTheModelHasItOrAParentOfIt) {
    std::vector<I18NLocale> const supported = locales({"en", "de"});
    I18NLocale const english("en");
    EXPECT_EQ(VexChooseLocale(supported, I18NLocale("de_AT"), english).getName(), "de_AT");
    EXPECT_EQ(VexChooseLocale(supported, I18NLocale("fr"), english).getName(), "en");
    EXPECT_EQ(VexChooseLocale(supported, I18NLocale(), english).getName(), "en");
    EXPECT_EQ(VexChooseLocale({}, I18NLocale("de"), english).getName(), "en");
}

} // namespace
