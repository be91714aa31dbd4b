// Every object of an answer, asked for by its id, comes back as itself: on the sample
// models and in each of their languages, however names lead.

#include "KRLIDOM_Element.h"
#include "KRLIDOM_Writer.h"
#include "VexObject.h"
#include "host/content/MemoryContent.h"
#include "host/import/xml/FileText.h"
#include "host/import/xml/ModelLoader.h"
#include "host/insight/AskedStart.h"
#include "host/insight/ObjectText.h"
#include "host/insight/TreeQuestion.h"
#include "tests/host/service/ServedModel.h"

#include <gtest/gtest.h>

namespace {

constexpr char const* path = "file"; // outside of the content store nobody is restricted

/// Keeps what is written: the object and its element's tag.
class Written final : public VexTreeObserver {
public:
    void report(VexTreeReport const& report) override {
        if (report.treatment == VexTreeTreatment::Written &&
            report.shortcut == VexTreeReport::None) {
            objects.emplace_back(report.object, report.tag);
        }
    }
    void reportOutside(VexTreeSize const& /*size*/) override {}

    std::vector<std::pair<VEX_HANDLE, I18NString>> objects;
};

class Addresses : public testing::TestWithParam<char const*> {
protected:
    Addresses() {
        std::string const file = std::string(VEX_SOURCE_DIR) + '/' + GetParam();
        m_content.setModel(path, vex::loadModelText(vex::readFileText(file), file));
    }

    vex::Visit visit(I18NLocale const& locale) {
        return vex::openVisit(m_content, {path, "", locale});
    }

    /// What the trees from all namespaces show.
    Written all(vex::Visit const& visit) {
        vex::TreeQuestion question;
        question.collections = vex::collectionsOf(visit.model());
        Written written;
        for (vex::TreeStart const& start : vex::treeStartsOf(visit.model(), visit.locale)) {
            question.start = start.path;
            question.marker = "marker";
            vex::CallEnd const end = m_service.explainTree(
                visit, question.makeRequest().toDocument().document(), written, {});
            EXPECT_TRUE(end.isAnswered()) << end.text;
        }
        return written;
    }

    /// The first element of an answer at the object with that id, and in `start` what
    /// the plug-in says that it is.
    KRLIDOM_OwnedDocument askFor(vex::Visit const& visit, I18NString const& id,
                                 vex::StartObserver& start) {
        vex::MetadataRequest const request{
            .start = "[somewhere else]",
            .depth = 1,
            .properties = {"*/@ID", "*/@name", "*/@_path"},
        };
        KRLIDOM_OwnedDocument const document = request.toDocument();
        EXPECT_TRUE(
            m_service.explainTreeAt(visit, id, document.document(), start, {}).isAnswered());
        vex::MetadataAnswer answer = m_service.metadataAt(visit, id, document.document(), {});
        EXPECT_TRUE(answer.end.isAnswered()) << id.c_str() << ": " << answer.end.text;
        return std::move(answer.response);
    }

    static KRLIDOM_Element startOf(KRLIDOM_OwnedDocument const& answer) {
        return KRLIDOM_Element(
            answer.document().getDocumentElement().getFirstChild().getFirstChild());
    }

    vex::MemoryContent m_content;
    vex::Service m_service{servingPlugin()};
};

TEST_P(Addresses, LeadEachObjectOfAnAnswerBackToItselfInEveryLanguage) {
    std::vector<I18NLocale> locales = visit(I18NLocale()).model().locales();
    locales.push_back(visit(I18NLocale()).locale);
    for (I18NLocale const& locale : locales) {
        vex::Visit const asked = visit(locale);
        Written const written = all(asked);
        EXPECT_FALSE(written.objects.empty());
        for (auto const& [object, tag] : written.objects) {
            I18NString const key = vex::idOf(object);
            if (key.empty()) {
                continue; // an answer says nothing to ask for it by
            }
            vex::StartObserver start;
            KRLIDOM_OwnedDocument const answer = askFor(asked, key, start);
            EXPECT_EQ(start.start(), object) << key.c_str();
            KRLIDOM_Element const element = startOf(answer);
            ASSERT_FALSE(element.isNull()) << key.c_str();
            EXPECT_EQ(element.getTagName(), tag) << key.c_str();
            EXPECT_EQ(element.getAttribute("name"), vex::nameIn(asked.locale, object))
                << key.c_str();
            if (vex::classOf(object) != "shortcut") { // it has the id of what it stands for
                EXPECT_EQ(element.getAttribute("ID"), key);
            }
        }
    }
}

TEST_P(Addresses, GiveEachNamespaceThePathThatAStartAtItHas) {
    vex::Visit const asked = visit(I18NLocale());
    for (vex::TreeStart const& start : vex::treeStartsOf(asked.model(), asked.locale)) {
        if (vex::idOf(start.space).empty() || start.path.empty()) {
            continue;
        }
        vex::MetadataRequest request{
            .start = start.path,
            .properties = {"*/@ID", "*/@name", "*/@_path", "*/@_ref"},
            .collections = {"*/*"},
        };
        vex::MetadataAnswer const byPath = m_service.metadata(asked, request, {});
        vex::MetadataAnswer const byId = m_service.metadataAt(asked, vex::idOf(start.space),
                                                              request.toDocument().document(), {});
        EXPECT_EQ(KRLIDOM_Writer::toUtf8(byId.response.document()),
                  KRLIDOM_Writer::toUtf8(byPath.response.document()));
    }
}

INSTANTIATE_TEST_SUITE_P(Models, Addresses,
                         testing::Values("samples/retail.model.xml", "docs/examples/shop.model.xml",
                                         "docs/examples/schema.model.xml",
                                         "docs/examples/tutorial/2-german.model.xml",
                                         "docs/examples/tutorial/3-views.model.xml",
                                         "docs/examples/tutorial/bikes.model.xml"));

} // namespace
