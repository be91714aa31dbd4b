// Translations of models that list languages in many places.

#include "host/translate/TranslatableModel.h"
#include "tests/growth/Growth.h"

#include <string>

TEST(TranslationGrowth, LanguagesAreListedInManyPlaces) {
    EXPECT_TRUE(staysInProportion(1'000, [](std::size_t size) {
        std::string document = "<model defaultLocale='en' id='m' name='M'>";
        for (std::size_t number = 0; number < size; ++number) {
            document += "<locales><locale>en</locale></locales>";
        }
        document += "</model>";
        return countWork(document.size(), [&] {
            vex::TranslatableModel const model(document, "m.xml");
            vex::TranslationFile texts = model.texts(I18NLocale("de"));
            texts.units.at(0).target = "N";
            model.apply(texts, I18NLocale("de"), "de.csv");
        });
    }));
}
