#include "KRLIDOM_Writer.h"
#include "host/content/FileContent.h"
#include "host/service/Service.h"
#include "tests/host/content/CachePlace.h"
#include "tests/host/service/ServedModel.h"

#include <gmock/gmock.h>

namespace {

/// All that the users of a catalogue of the samples are told, in all languages.
std::string answersOf(std::string const& catalogueFile, std::shared_ptr<vex::ImageCache> cache) {
    vex::Service service(servingPlugin());
    auto const catalogue =
        vex::loadCatalogue(std::string(VEX_SOURCE_DIR) + "/samples/" + catalogueFile);
    vex::FileContent content(catalogue, {}, false, std::move(cache));
    vex::MetadataRequest const everything{.properties = {"*/@*"}, .collections = {"*/*"}};
    std::string answers;
    for (vex::CatalogueModel const& model : catalogue->models) {
        for (vex::CatalogueUser const& user : catalogue->users) {
            for (I18NLocale const& locale : content.getModel(model.path)->model()->locales()) {
                vex::Visit const visit = vex::openVisit(content, {model.path, user.name, locale});
                vex::MetadataAnswer const answer = service.metadata(visit, everything, {});
                answers += answer.end.text + KRLIDOM_Writer::toUtf8(answer.response.document());
                Vex_Handle_Collection objects;
                for (std::size_t at = 0; at < visit.model().elementCount(); ++at) {
                    objects.push_back(visit.model().getElement(at));
                }
                for (bool const each : service.access(visit, objects, 0, {}).verdicts) {
                    answers += each ? '1' : '0';
                }
                answers += '\n';
            }
        }
    }
    return answers;
}

TEST(CachedAnswers, AreThoseOfTheDocumentToTheLetterForEveryUserAndLanguage) {
    for (char const* const file : {"retail.catalog.xml", "retail.rules.catalog.xml"}) {
        CachePlace const place;
        std::string const plain = answersOf(file, nullptr);
        EXPECT_GT(plain.size(), 5'000U);
        for (int time = 0; time < 2; ++time) { // the document is read, then its image opened
            auto const cache = std::make_shared<vex::ImageCache>(place.options());
            EXPECT_EQ(answersOf(file, cache), plain);
            EXPECT_THAT(cache->finish(), testing::IsEmpty());
            EXPECT_THAT(place.files(), testing::SizeIs(1));
        }
    }
}

} // namespace
