#include "host/translate/TranslatableModel.h"

#include "I18NString.h"
#include "KRLException.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using vex::TranslatableModel;
using vex::TranslationFile;
using vex::TranslationMark;
using vex::TranslationOutcome;

constexpr char const* shop = R"(<?xml version="1.0" encoding="UTF-8"?>
<model id="m" defaultLocale="en_GB"><!-- kept by nobody -->
  <locales><locale>en_GB</locale></locales>
  <namespace id="n" name="Shop">
    <querySubject id="q" description="one &amp; all">
      <property name="name">Orders</property>
      <property name="name" locale="en">Orders!</property>
      <queryItem id="i" name="Total" tag="x"><property name="format">0<property name="deep">1</property></property></queryItem>
      <property name="description" locale="de">alt</property>
      <queryItem name="No id"/>
    </querySubject>
  </namespace>
  <securityView id="v" name="All"><set kind="included"><item>n</item><item>i</item></set></securityView>
</model>
)";

I18NLocale locale(char const* name) {
    return I18NLocale(I18NString(name));
}

TranslationFile german(std::vector<vex::TranslationUnit> units) {
    return {.sourceLocale = locale("en_GB"),
            .targetLocale = locale("de"),
            .original = "",
            .units = std::move(units)};
}

std::vector<std::string> textsOf(TranslationFile const& file) {
    std::vector<std::string> texts;
    for (auto const& unit : file.units) {
        texts.push_back(unit.object + '/' + unit.property + ": " + unit.source +
                        (unit.target.empty() ? "" : " -> " + unit.target));
    }
    return texts;
}

TEST(TranslatableModel, HasTheTextsOfWhatHasAnIdInTheDefaultLanguage) {
    TranslatableModel const model(shop, "m.xml");
    EXPECT_THAT(textsOf(model.texts(locale("de"))),
                ElementsAre("n/name: Shop", "q/name: Orders!", "q/description: one & all -> alt",
                            "i/name: Total", "v/name: All"));
    EXPECT_EQ(model.texts(locale("de")).units[3].note, "queryItem in Orders!");
    EXPECT_EQ(model.texts(locale("de")).units[2].note, "querySubject Orders!");
}

TEST(TranslatableModel, IsWrittenWithItsTranslationsAndWithoutAnyOtherChange) {
    TranslatableModel const model(shop, "m.xml");
    TranslationOutcome const outcome =
        model.apply(german({{"n", "name", "Shop", "Laden"},
                            {"q", "name", "Orders!", "Aufträge"},
                            {"q", "description", "one & all", " neu < "},
                            {"i", "screenTip", "", ""}}),
                    locale("de"), "t.csv");
    EXPECT_EQ(outcome.document, R"(<?xml version="1.0" encoding="UTF-8"?>
<model id="m" defaultLocale="en_GB">
  <locales>
    <locale>en_GB</locale>
    <locale>de</locale>
  </locales>
  <namespace id="n" name="Shop">
    <property name="name" locale="de">Laden</property>
    <querySubject id="q" description="one &amp; all">
      <property name="name">Orders</property>
      <property name="name" locale="en">Orders!</property>
      <property name="name" locale="de">Aufträge</property>
      <queryItem id="i" name="Total" tag="x">
        <property name="format">0
          <property name="deep">1</property>
        </property>
      </queryItem>
      <property name="description" locale="de">neu &lt;</property>
      <queryItem name="No id"/>
    </querySubject>
  </namespace>
  <securityView id="v" name="All">
    <set kind="included">
      <item>n</item>
      <item>i</item>
    </set>
  </securityView>
</model>
)");
    EXPECT_EQ(outcome.added, 2U);
    EXPECT_EQ(outcome.replaced, 1U);
    EXPECT_EQ(outcome.missing, 2U);
    ASSERT_EQ(outcome.gone.size(), 1U);
    EXPECT_EQ(outcome.gone[0].property, "screenTip");
}

TEST(TranslatableModel, IsTheSameWhenTheSameIsAppliedAgain) {
    TranslationFile const translations = german({{"n", "name", "Shop", "Laden"}});
    std::string const once =
        TranslatableModel(shop, "m").apply(translations, locale("de"), "t").document;
    TranslationOutcome const again =
        TranslatableModel(once, "m").apply(translations, locale("de"), "t");
    EXPECT_EQ(again.document, once);
    EXPECT_EQ(again.same, 1U);
    EXPECT_EQ(again.added + again.replaced, 0U);
}

TEST(TranslatableModel, TellsWhatChangedAndWhatIsGoneAndKeepsBothMarked) {
    TranslationOutcome const outcome =
        TranslatableModel(shop, "m").apply(german({{"n", "name", "Store", "Geschäft"},
                                                   {"old", "name", "Old", "Alt"},
                                                   {"i", "name", "Sum", ""},
                                                   {"v", "name", "All\r", "Alles"}}),
                                           locale("de"), "t");
    ASSERT_EQ(outcome.changed.size(), 1U);
    EXPECT_EQ(outcome.changed[0].unit.source, "Store");
    EXPECT_EQ(outcome.changed[0].now, "Shop");
    ASSERT_EQ(outcome.gone.size(), 1U);
    EXPECT_EQ(outcome.gone[0].target, "Alt");
    EXPECT_THAT(outcome.document, HasSubstr(">Geschäft<"));
    EXPECT_THAT(outcome.document, Not(HasSubstr("Alt")));
    EXPECT_THAT(textsOf(outcome.renewed),
                ElementsAre("n/name: Shop -> Geschäft", "q/name: Orders!",
                            "q/description: one & all -> alt", "i/name: Total",
                            "v/name: All -> Alles", "old/name: Old -> Alt"));
    EXPECT_EQ(outcome.renewed.units.front().mark, TranslationMark::Changed);
    EXPECT_EQ(outcome.renewed.units[4].mark, TranslationMark::None);
    EXPECT_EQ(outcome.renewed.units.back().mark, TranslationMark::Gone);
}

TEST(TranslatableModel, TellsOfAMarkUntilSomebodyHasSeenToIt) {
    TranslationFile const renewed =
        TranslatableModel(shop, "m")
            .apply(german({{"n", "name", "Store", "Geschäft"}}), locale("de"), "t")
            .renewed;
    EXPECT_EQ(TranslatableModel(shop, "m").apply(renewed, locale("de"), "t").changed.size(), 1U);
    TranslationFile seen = renewed;
    seen.units.front().mark = TranslationMark::None;
    EXPECT_TRUE(TranslatableModel(shop, "m").apply(seen, locale("de"), "t").changed.empty());
}

TEST(TranslatableModel, GetsAListOfLanguagesWhereItHadNone) {
    auto const outcome = TranslatableModel("<model id='m' name='M'/>", "m")
                             .apply(german({{"m", "name", "M", "D"}}), locale("de"), "t");
    EXPECT_EQ(outcome.document, R"(<?xml version="1.0" encoding="UTF-8"?>
<model id="m" name="M">
  <locales>
    <locale>en_US</locale>
    <locale>de</locale>
  </locales>
  <property name="name" locale="de">D</property>
</model>
)");
}

TEST(TranslatableModel, ListsItsLanguageOnceHoweverManyListsThereAre) {
    std::string const list = "<locales><locale>en</locale></locales>";
    vex::TranslatableModel const model(
        "<model defaultLocale='en' id='m' name='M'>" + list + list + "</model>", "m.xml");
    vex::TranslationFile texts = model.texts(I18NLocale("de"));
    texts.units.at(0).target = "N";
    EXPECT_EQ(model.apply(texts, I18NLocale("de"), "de.csv").document,
              R"(<?xml version="1.0" encoding="UTF-8"?>
<model defaultLocale="en" id="m" name="M">
  <locales>
    <locale>en</locale>
    <locale>de</locale>
  </locales>
  <locales>
    <locale>en</locale>
  </locales>
  <property name="name" locale="de">N</property>
</model>
)");
}

TEST(TranslatableModel, KnowsTheLanguagesOfItsOwnNames) {
    TranslatableModel const model(shop, "m.xml");
    EXPECT_TRUE(model.isOwnLanguage(locale("en_GB")));
    EXPECT_TRUE(model.isOwnLanguage(locale("en")));
    EXPECT_FALSE(model.isOwnLanguage(locale("en_US")));
}

TEST(TranslatableModel, RefusesWhatCannotBeTranslatedWhereItStands) {
    auto const problemOf = [](vex::TranslationUnit unit) -> std::string {
        unit.position = {7, 3};
        try {
            TranslatableModel(shop, "m").apply(german({std::move(unit)}), locale("de"), "t.csv");
        } catch (KRLDocumentException const& problem) {
            return problem.what();
        }
        return "";
    };
    EXPECT_THAT(problemOf({"n", "expression", "a", "b"}),
                HasSubstr("t.csv:7:3: the property \"expression\" is not translated"));
    EXPECT_THAT(problemOf({"n", "name", "Shop", "a\x01"}),
                HasSubstr("t.csv:7:3: the text holds a character"));
    EXPECT_THROW(TranslatableModel("<model><property/></model>", "m"), KRLDocumentException);
}

} // namespace
