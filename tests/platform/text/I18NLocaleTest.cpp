#include "I18NNumericFormat.h"
#include "KRLException.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>
#include <unicode/locid.h>

namespace {

// Makes ICU's own fallback differ from what an unknown locale must answer.
class ProcessLocale {
public:
    explicit ProcessLocale(char const* name) : m_before(icu::Locale::getDefault()) {
        set(icu::Locale(name));
    }
    ProcessLocale(ProcessLocale const&) = delete;
    ProcessLocale& operator=(ProcessLocale const&) = delete;
    ~ProcessLocale() { set(m_before); }

private:
    static void set(icu::Locale const& locale) {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(locale, status);
    }
    icu::Locale m_before;
};

TEST(I18NLocale, IsOneInAllItsSpellings) {
    I18NLocale const locale("de-AT");
    EXPECT_EQ(locale.getName(), "de_AT");
    for (char const* spelling : {"de_AT", "de_at", "DE-at", "de-at"}) {
        EXPECT_TRUE(I18NLocale(spelling) == locale) << spelling;
        EXPECT_EQ(I18NLocale(spelling).getNumber(), locale.getNumber()) << spelling;
    }
    EXPECT_TRUE(locale != I18NLocale("de"));
    EXPECT_NE(locale.getNumber(), I18NLocale("de").getNumber());
}

TEST(I18NLocale, SpellsScriptAndRegion) {
    EXPECT_EQ(I18NLocale("zh-hans-cn").getName(), "zh_Hans_CN");
    EXPECT_EQ(I18NLocale("es-419").getName(), "es_419");
}

TEST(I18NLocale, IsNamelessWithoutName) {
    EXPECT_TRUE(I18NLocale() == I18NLocale(""));
    EXPECT_TRUE(I18NLocale().getName().empty());
    EXPECT_EQ(I18NLocale().getNumber(), 0U);
    EXPECT_TRUE(I18NLocale() != I18NLocale("en"));
}

TEST(I18NLocale, HasParentsUpToTheNamelessOne) {
    I18NLocale const locale("zh-Hans-CN");
    EXPECT_EQ(locale.getParent().getName(), "zh_Hans");
    EXPECT_EQ(locale.getParent().getParent().getName(), "zh");
    EXPECT_TRUE(locale.getParent().getParent().getParent() == I18NLocale());
    EXPECT_TRUE(I18NLocale().getParent() == I18NLocale());
    EXPECT_TRUE(I18NLocale("de_AT").getParent() == I18NLocale("de"));
}

TEST(I18NLocale, LosesKeywordsBeforeSubtags) {
    EXPECT_EQ(I18NLocale("de_AT@collation=phonebook").getParent().getName(), "de_AT");
}

TEST(I18NLocale, SkipsAnEmptySubtagOnTheWayUp) {
    EXPECT_EQ(I18NLocale("de__POSIX").getParent().getName(), "de");
}

TEST(I18NLocale, TakesAnyTextAsAName) {
    for (std::string const& name :
         {std::string(5'000, '_'), std::string(5'000, 'a'), std::string("a b"), std::string("@"),
          std::string("qq_@_@_"), std::string("\xC3\xA4_\xC3\xA4")}) {
        I18NLocale locale{I18NString(name.c_str())};
        EXPECT_EQ(locale.getDecimalSeparator(), ".") << name.substr(0, 10);
        int steps = 0;
        for (; locale != I18NLocale() && steps < 200; ++steps) {
            locale = locale.getParent();
        }
        EXPECT_LT(steps, 200) << name.substr(0, 10);
    }
}

TEST(I18NLocale, AnswersForMoreSpellingsThanItRemembers) {
    // Upper and lower case in every position: 2^11 spellings of one locale.
    std::string const name = "abcdefgh_de";
    I18NLocale const locale{I18NString(name.c_str())};
    for (unsigned bits = 0; bits < 1U << 11U; ++bits) {
        std::string spelling = name;
        for (std::size_t i = 0; i < spelling.size(); ++i) {
            if ((bits >> i & 1U) != 0 && spelling[i] != '_') {
                spelling[i] = static_cast<char>(spelling[i] - 'a' + 'A');
            }
        }
        ASSERT_TRUE(I18NLocale(I18NString(spelling.c_str())) == locale) << spelling;
    }
}

// In a process of its own, since names are kept.
TEST(I18NLocale, KeepsNamesUntilTheyFillTheirRoomAndKnowsThemThen) {
    auto const numbered = [](int number) {
        return I18NLocale(I18NString(("de_AT_X" + std::to_string(number)).c_str()));
    };
    auto const fillAndAsk = [&] {
        I18NLocale const first = numbered(0);
        int names = 1;
        std::string said;
        try {
            for (;; ++names) {
                numbered(names);
            }
        } catch (KRLLimitException const& full) {
            said = full.what();
        }
        bool const isBounded = names > 10'000 && names < 40'000;
        bool const isTold = said.find("Too many locales have been named") == 0;
        bool const isKnown = numbered(0) == first && numbered(1) != first &&
                             I18NLocale("DE-at-x0") == first && I18NLocale("de_AT") != first;
        bool const isLanguageTaken = I18NLocale("fr-ca").getName() == "fr_CA" &&
                                     I18NLocale("sr_Latn_RS") == I18NLocale("sr-latn-rs");
        std::_Exit(isBounded && isTold && isKnown && isLanguageTaken ? 0 : 1);
    };
    EXPECT_EXIT(fillAndAsk(), testing::ExitedWithCode(0), "");
}

TEST(I18NLocale, TakesAFixedRoomForNamesOfAnyLength) {
    EXPECT_EXIT(
        {
            int names = 0;
            try {
                for (;; ++names) {
                    I18NLocale(
                        I18NString((std::to_string(names) + std::string(200'000, 'x')).c_str()));
                }
            } catch (KRLLimitException const&) {
                std::_Exit(names < 50 ? 0 : 1);
            }
        },
        testing::ExitedWithCode(0), "");
}

TEST(I18NLocale, KnowsTheDecimalSeparator) {
    EXPECT_EQ(I18NLocale("en").getDecimalSeparator(), ".");
    EXPECT_EQ(I18NLocale("de").getDecimalSeparator(), ",");
    EXPECT_EQ(I18NLocale("de_AT").getDecimalSeparator(), ",");
    EXPECT_EQ(I18NLocale("de_CH").getDecimalSeparator(), ".");
    EXPECT_EQ(I18NLocale("ja").getDecimalSeparator(), ".");
    EXPECT_EQ(I18NLocale("ar_EG").getDecimalSeparator().view(), u"\u066B");
}

TEST(I18NLocale, WritesAPointForAnUnknownLocaleWhateverTheEnvironment) {
    ProcessLocale const german("de_DE");
    EXPECT_EQ(I18NLocale("xx").getDecimalSeparator(), ".");
    EXPECT_EQ(I18NLocale("tlh").getDecimalSeparator(), ".");
    EXPECT_EQ(I18NLocale().getDecimalSeparator(), ".");
    EXPECT_EQ(I18NLocale("en_GB").getDecimalSeparator(), ".");
}

TEST(I18NLocale, KnowsLanguagesAndRegions) {
    for (char const* name : {"en", "de-AT", "de_at", "zh_Hans_CN", "es_419", "ja_JP", "eng"}) {
        EXPECT_TRUE(I18NLocale::isKnown(name)) << name;
    }
    for (char const* name : {"", "xx", "de_QQ", "_AT", "de AT", "english", "1", "\xC3\xA4"}) {
        EXPECT_FALSE(I18NLocale::isKnown(name)) << name;
    }
}

TEST(I18NNumericFormat, GivesTheSeparatorOfItsLocale) {
    I18NString separator("before");
    I18NNumericFormat const german(I18NLocale("de"), I18NNumericFormatDecimal, nullptr, nullptr);
    german.getDecimalSeparator(separator);
    EXPECT_EQ(separator, ",");
    EXPECT_EQ(german.getType(), I18NNumericFormatDecimal);
}

TEST(I18NNumericFormat, GivesOneSeparatorForEveryType) {
    for (auto type :
         {I18NNumericFormatInteger, I18NNumericFormatPercent, I18NNumericFormatDecimal}) {
        I18NString separator;
        I18NNumericFormat(I18NLocale("fr"), type, nullptr, nullptr).getDecimalSeparator(separator);
        EXPECT_EQ(separator, ",");
    }
}

TEST(I18NNumericFormat, NumbersItsTypesForOtherHosts) {
    EXPECT_EQ(static_cast<int>(I18NNumericFormatDecimal), 2);
}

} // namespace
