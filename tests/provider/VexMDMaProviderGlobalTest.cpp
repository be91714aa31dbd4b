#include "provider/VexMDMaProvider.h"
#include "tests/support/ExpectFailure.h"
#include "tests/support/TestDocument.h"
#include "tests/support/TestSession.h"

#include <gtest/gtest.h>

namespace {

// A provider outside the content, so that nothing but the model is asked.
class Globals {
public:
    explicit Globals(std::string const& head = "<model defaultLocale=\"en\">")
        : model(head + "<namespace name=\"N\"/></model>") {}

    /// What stands behind the empty "Result" when these keys are asked for.
    std::string answer(std::vector<std::string> const& keys) {
        std::string text = "<Metadata>";
        for (std::string const& key : keys) {
            text += "<Property name=\"" + key + "\"/>";
        }
        TestRequest request(text + "</Metadata>");
        TestResponse response;
        provider.doRequest(request.node(), response.node());
        std::string const all = response.text();
        std::string const before = "<Response><Result/>";
        std::string const after = "</Response>";
        EXPECT_EQ(all.substr(0, before.size()), before);
        return all.substr(before.size(), all.size() - before.size() - after.size());
    }

    TestModel model;
    TestSession session{model};
    VexMDMaProvider provider{session, "/public/m"};
};

std::string const deEnFr = "<model defaultLocale=\"de\"><locales><locale>de</locale>"
                           "<locale>en</locale><locale>fr</locale></locales>";
std::string const deEnFrAnswer = "<locales><locale>de</locale><locale>en</locale>"
                                 "<locale>fr</locale></locales>";

} // namespace

TEST(GlobalEntries, NothingIsWrittenThatIsNotAskedFor) {
    EXPECT_EQ(Globals().answer({}), "");
    EXPECT_EQ(
        Globals().answer({"./@name/@x", "/@unknown", "/@decimalseparator", "@decimalSeparator",
                          "namespace/@decimalSeparator", " /@decimalSeparator"}),
        "");
}

TEST(GlobalEntries, SeparatorsFollowTheLocaleOfTheSession) {
    struct Row {
        char const* locale;
        char const* decimal;
        char const* list;
    };
    for (Row const& row :
         {Row{"en", ".", "comma"}, Row{"de", ",", "semiColon"}, Row{"de_CH", ".", "comma"},
          Row{"fa", "\u066B", "semiColon"}, Row{"fr_FR", ",", "semiColon"}}) {
        Globals on;
        on.session.setLocale(row.locale);
        EXPECT_EQ(on.answer({"/@decimalSeparator", "/@listSeparator"}),
                  std::string("<decimalSeparator value=\"") + row.decimal +
                      "\"/><listSeparator value=\"" + row.list + "\"/>")
            << row.locale;
    }
}

TEST(GlobalEntries, BothSpellingsOfASeparatorAreKnown) {
    EXPECT_EQ(Globals().answer({"/@decimal_separator", "/@decimalSeparator", "/@list_separator",
                                "/@listSeparator"}),
              "<decimalSeparator value=\".\"/><decimalSeparator value=\".\"/>"
              "<listSeparator value=\"comma\"/><listSeparator value=\"comma\"/>");
}

TEST(GlobalEntries, EntriesStandInTheOrderOfTheRequestAndRepeat) {
    EXPECT_EQ(Globals().answer({"/@effectiveLocale", "/@listSeparator", "/@effectiveLocale"}),
              "<effectiveLocale>en</effectiveLocale><listSeparator value=\"comma\"/>"
              "<effectiveLocale>en</effectiveLocale>");
}

// covers quirk: model-path-not-told
TEST(GlobalEntries, TheModelSearchPathIsKnownAndAnsweredWithNothing) {
    EXPECT_EQ(Globals().answer({"/@modelSearchPath"}), "");
    EXPECT_EQ(Globals().answer({"/@modelSearchPath", "/@listSeparator"}),
              "<listSeparator value=\"comma\"/>");
}

TEST(GlobalEntries, TheEffectiveLocaleIsTheSessions) {
    Globals on;
    on.session.setLocale("pt_BR");
    EXPECT_EQ(on.answer({"/@effectiveLocale"}), "<effectiveLocale>pt_BR</effectiveLocale>");
}

TEST(GlobalEntries, TheDefaultLocaleIsTheModels) {
    EXPECT_EQ(Globals("<model defaultLocale=\"de\">").answer({"/@defaultLocale"}),
              "<defaultLocale>de</defaultLocale>");
}

TEST(GlobalEntries, WithoutADefaultLocaleItIsAmericanEnglish) {
    EXPECT_EQ(Globals("<model>").answer({"/@defaultLocale"}),
              "<defaultLocale>en_US</defaultLocale>");
}

TEST(GlobalEntries, ADefaultLocaleWithoutValueIsWrittenEmpty) {
    EXPECT_EQ(Globals("<model defaultLocale=\"\">").answer({"/@defaultLocale"}),
              "<defaultLocale></defaultLocale>");
}

TEST(GlobalEntries, SupportedLocalesStandInTheModelsOrder) {
    EXPECT_EQ(Globals(deEnFr).answer({"/@supportedLocales"}), deEnFrAnswer);
}

TEST(GlobalEntries, AModelWithoutLocalesGivesAnEmptyList) {
    EXPECT_EQ(Globals().answer({"/@supportedLocales"}), "<locales/>");
    EXPECT_EQ(Globals("<model><locales/>").answer({"/@supportedLocales"}), "<locales/>");
}

TEST(GlobalEntries, OnlyTheFirstListOfLocalesIsRead) {
    EXPECT_EQ(Globals("<model><locales><locale>de</locale></locales>"
                      "<locales><locale>en</locale></locales>")
                  .answer({"/@supportedLocales"}),
              "<locales><locale>de</locale></locales>");
    EXPECT_EQ(Globals("<model><property name=\"locales\"/>"
                      "<locales><locale>en</locale></locales>")
                  .answer({"/@supportedLocales"}),
              "<locales/>");
}

TEST(GlobalEntries, EveryPropertyOfTheListCountsWhateverItsName) {
    EXPECT_EQ(Globals("<model><property name=\"locales\"><property name=\"x\">de</property>"
                      "<property name=\"y\"/></property>")
                  .answer({"/@supportedLocales"}),
              "<locales><locale>de</locale><locale></locale></locales>");
}

TEST(GlobalEntries, ALaterRequestRepeatsNoLocale) {
    Globals on(deEnFr);
    EXPECT_EQ(on.answer({"/@supportedLocales"}), deEnFrAnswer);
    EXPECT_EQ(on.answer({"/@supportedLocales"}), deEnFrAnswer);
}

TEST(GlobalEntries, ALocaleListedTwiceIsWrittenOnce) {
    EXPECT_EQ(Globals("<model><locales><locale>de</locale><locale>en</locale>"
                      "<locale>de</locale></locales>")
                  .answer({"/@supportedLocales"}),
              "<locales><locale>de</locale><locale>en</locale></locales>");
}

TEST(GlobalEntries, LocalesAreReadOnceForEachModelRequestAndForNoFunctionRequest) {
    Globals on(deEnFr);
    on.answer({});
    int const read = on.model.calls().count(Call::Properties);
    EXPECT_EQ(read, 2);
    TestRequest request("<Metadata function=\"1\"><Property name=\"/@listSeparator\"/></Metadata>");
    TestResponse response;
    on.provider.doRequest(request.node(), response.node());
    EXPECT_EQ(on.model.calls().count(Call::Properties), read);
    EXPECT_EQ(response.text(), "<Response><Result><package/></Result></Response>");
}
