#include "host/insight/RequestWords.h"

#include "host/content/MemoryContent.h"
#include "host/import/xml/ModelLoader.h"
#include "host/insight/ObjectText.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vex::MetadataRequest;

constexpr char const* shop = R"(<model defaultLocale='en'>
  <locales><locale>en</locale><locale>de</locale></locales>
  <namespace id='n' name='Shop'>
    <querySubject id='q' name='Orders' band='a'><queryItem id='i' name='No'/></querySubject>
    <measure id='m' name='Margin' secretRate='3'/>
  </namespace>
</model>)";

/// Somebody who sees all of the shop but its measures, which one answer shows.
class RequestWords : public testing::Test {
protected:
    static std::shared_ptr<vex::Catalogue const> catalogue() {
        vex::Diagnostics none;
        return vex::readCatalogueText(
            "<catalog><model path='/content/shop' file='-'><package value='P'>"
            "<property name='screenTip'>t</property></package><grant role='r' view='view.a'/>"
            "<grant role='other' view='view.b'/></model><user name='u'><role>r</role></user>"
            "</catalog>",
            "c.xml", "", none);
    }

    vex::Visit visit(char const* locale = "") {
        vex::MemoryContent content(m_catalogue);
        content.setModel("/content/shop", vex::loadModelText(shop, "m.xml"));
        return vex::openVisit(content, {"/content/shop", "u", I18NLocale(locale)});
    }

    std::vector<std::string> doubtsAbout(MetadataRequest const& request) {
        vex::Visit const visited = visit();
        vex::SeenWords seen(
            visited.model(),
            [](Vex_Handle_Collection const& objects) {
                std::vector<bool> verdicts;
                for (VEX_HANDLE const object : objects) {
                    verdicts.push_back(vex::classOf(object) != "measure");
                }
                return verdicts;
            },
            [&] {
                return m_answersMeasure ? std::vector<VEX_HANDLE>{visited.model().findById("m")}
                                        : std::vector<VEX_HANDLE>{};
            });
        std::vector<std::string> texts;
        for (vex::DoubtfulWord const& each : vex::doubtfulWords(request, visited, seen)) {
            texts.push_back(each.text);
        }
        return texts;
    }

    std::shared_ptr<vex::Catalogue const> m_catalogue = catalogue();
    bool m_answersMeasure = false;
};

TEST_F(RequestWords, AreNotDoubtfulWhenTheyHaveAMeaningOrAreSeen) {
    EXPECT_THAT(doubtsAbout({.view = "view.a",
                             .globals = {"defaultLocale", "list_separator"},
                             .properties = {"*/@name", "./@ID", "querySubject/@band", "*/@*",
                                            "filter/@expression", "namespace/@screenTip"},
                             .collections = {"*/*", "namespace/folder", "*/querySubject"},
                             .constraints = {{"./@usage", "fact"}}}),
                IsEmpty());
}

TEST_F(RequestWords, AreDoubtfulWhenNoObjectHasThem) {
    EXPECT_THAT(
        doubtsAbout({.globals = {"defaultLocal"},
                     .properties = {"*/@bnad", "queryItm/@name", "*/@id"},
                     .collections = {"*/queryItms"},
                     .constraints = {{"./@colour", "red"}}}),
        ElementsAre("there is no setting \"defaultLocal\"; did you mean defaultLocale?",
                    "no object that may be seen has the property \"bnad\"; did you mean band?",
                    "no object that may be seen is of the class \"queryItm\"; did you mean "
                    "queryItem?",
                    "no object that may be seen has the property \"id\"; did you mean ID?",
                    "no object that may be seen is in a collection \"queryItms\"; did you mean "
                    "queryItem?",
                    "no object that may be seen has the property \"colour\""));
}

TEST_F(RequestWords, DoNotTellWhatOnlyUnseenObjectsHave) {
    EXPECT_THAT(doubtsAbout({.properties = {"*/@secretRate", "*/@secretRat", "*/@secretRote"},
                             .collections = {"*/measure", "*/measur"}}),
                ElementsAre("no object that may be seen has the property \"secretRate\"",
                            "no object that may be seen has the property \"secretRat\"",
                            "no object that may be seen has the property \"secretRote\"",
                            "no object that may be seen is in a collection \"measure\"",
                            "no object that may be seen is in a collection \"measur\""));
}

TEST_F(RequestWords, AreSeenWhenTheAnswerShowsThem) {
    m_answersMeasure = true;
    EXPECT_THAT(doubtsAbout({.properties = {"*/@secretRate", "*/@secretRat"},
                             .collections = {"*/measure"}}),
                ElementsAre("no object that may be seen has the property \"secretRat\"; did you "
                            "mean secretRate?"));
}

TEST_F(RequestWords, AreDoubtfulInAFormThatIsNotRead) {
    EXPECT_THAT(doubtsAbout({.properties = {"@name"},
                             .collections = {"name", "*/"},
                             .oddConstraints = {"usage=fact"}}),
                ElementsAre(testing::HasSubstr("the property \"@name\" is asked of nothing"),
                            testing::HasSubstr("the collection \"name\" is asked of nothing"),
                            testing::HasSubstr("the collection \"*/\" is asked of nothing"),
                            "the constraint \"usage=fact\" binds nothing; write it as "
                            "CLASS/@NAME=[VALUE]"));
}

TEST_F(RequestWords, NameNoViewButTheUsersOwn) {
    EXPECT_THAT(doubtsAbout({.view = "view.c"}), // as near to the other's
                ElementsAre("the view \"view.c\" is none of the user's; did you mean view.a?"));
    EXPECT_THAT(doubtsAbout({.view = "view.b"}),
                ElementsAre("the view \"view.b\" is none of the user's; did you mean view.a?"));
    EXPECT_THAT(doubtsAbout({.view = "other"}),
                ElementsAre("the view \"other\" is none of the user's"));
}

TEST_F(RequestWords, OfAFunctionRequestArePropertiesOfThePackage) {
    EXPECT_THAT(doubtsAbout({.functions = true,
                             .properties = {"package/@screentip", "package/@name",
                                            "package/@screenTip", "folder/@colour"}}),
                ElementsAre("the package has no property \"screentip\"; did you mean screenTip?"));
}

TEST_F(RequestWords, AreLookedAtWithoutACatalogueToo) {
    m_catalogue = nullptr;
    EXPECT_THAT(doubtsAbout({.view = "view.a"}),
                ElementsAre("the view \"view.a\" is not looked at: nobody is restricted in a model "
                            "file alone"));
    EXPECT_THAT(doubtsAbout({.functions = true}),
                ElementsAre("a model file alone is published in no package, so the answer has "
                            "none"));
}

TEST_F(RequestWords, SayThatALanguageInTheDocumentChoosesNone) {
    EXPECT_THAT(doubtsAbout({.otherOptions = {{"xml:lang", "de"}}}),
                ElementsAre("the request's xml:lang \"de\" chooses no language, the session's is "
                            "en"));
    EXPECT_THAT(doubtsAbout({.otherOptions = {{"xml:lang", "en"}, {"authoringLocale", ""}}}),
                IsEmpty());
}

TEST_F(RequestWords, ALanguageThatTheModelLacksIsDoubtful) {
    EXPECT_EQ(vex::doubtfulLocale(visit("fr")),
              "the model has no language \"fr\", so en is used; it has en, de");
    for (char const* const locale : {"", "de", "de_AT", "en"}) {
        EXPECT_EQ(vex::doubtfulLocale(visit(locale)), "") << locale;
    }
}

TEST_F(RequestWords, AreFiftyAtMost) {
    MetadataRequest request{.properties = {"*/@band"}};
    for (int count = 0; count < 1'000; ++count) {
        request.addProperty(I18NString::fromUtf8("x" + std::to_string(count)));
    }
    std::vector<std::string> const doubts = doubtsAbout(request);
    ASSERT_EQ(doubts.size(), 51U);
    EXPECT_EQ(doubts.back(),
              "what else the request asks for was not looked at; correct this first");
}

TEST_F(RequestWords, AreFoundInEveryObjectAtOnceWhenTheyAreMany) {
    MetadataRequest request;
    for (int count = 0; count < 40; ++count) {
        request.addProperty(I18NString::fromUtf8("x" + std::to_string(count)));
    }
    request.addProperty("band");
    request.addProperty("secretRate");
    request.addCollection("measure");
    request.addCollection("queryItem");
    EXPECT_EQ(doubtsAbout(request).size(), 42U);
}

} // namespace
