// Trees that go into everything once, beside those that go every way.

#include "KRLIDOM_Element.h"
#include "host/insight/ObjectText.h"
#include "host/insight/TreeRecorder.h"
#include "tests/host/service/ServedModel.h"

#include <random>
#include <set>

#include <gtest/gtest.h>

namespace {

using vex::AnsweredObject;
using vex::AnsweredTree;
using vex::TreeExtent;

constexpr std::size_t mostElements = 100'000;

/// Namespaces, folders and subjects with shortcuts to any of them, some without a name,
/// and a view of about half of all.
class RandomModel {
public:
    explicit RandomModel(unsigned seed) : m_random(seed) {}

    std::shared_ptr<vex::Model const> load() {
        std::string body;
        for (int space = 0; space < 2; ++space) {
            body += open("namespace", "N" + std::to_string(space));
            body += open("namespace", "M" + std::to_string(space)) + members() + "</namespace>";
            body += members() + open("folder", "F") + members() + "</folder></namespace>";
        }
        return vex::loadModelText("<model defaultLocale=\"en\">" + body +
                                      "<securityViews><securityView id=\"v\"><set "
                                      "kind=\"included\">" +
                                      m_included + "</set></securityView></securityViews></model>",
                                  "random");
    }

private:
    bool chance(unsigned outOf) { return m_random() % outOf == 0; }

    std::string open(std::string const& tag, std::string const& name,
                     std::string const& more = "") {
        std::string const id = 'o' + std::to_string(++m_objects);
        m_included += chance(2) ? "<item>" + id + "</item>" : "";
        return '<' + tag + " id=\"" + id + '"' + (chance(9) ? "" : " name=\"" + name + '"') + more +
               '>';
    }

    std::string members() {
        static char const* const targets[] = {"[N0]", "[M0]", "[N0].[S1]", "[M0].[S2]",
                                              "[N1]", "[M1]", "[N1].[S3]", "[N1].[F]"};
        std::string text;
        for (int number = 0; number < 2; ++number) {
            text += open("querySubject", "S" + std::to_string(m_objects % 5)) +
                    open("queryItem", "I") + "</queryItem></querySubject>";
        }
        std::string const target = targets[m_random() % std::size(targets)];
        bool const exists = target != "[M0].[S2]" && target != "[N1].[F]";
        return text +
               open("shortcut", "C" + std::to_string(m_objects),
                    exists ? " refobj=\"" + target + '"' : "") +
               "</shortcut>";
    }

    std::mt19937 m_random;
    std::size_t m_objects = 0;
    std::string m_included;
};

vex::Visit visitOf(std::shared_ptr<vex::Model const> const& model) {
    static std::shared_ptr<vex::Catalogue const> const catalogue = servedCatalogue();
    auto const own = std::make_shared<vex::Catalogue>(*catalogue);
    own->models[0].grants = {{"clerk", "v", 0, 0}};
    vex::Visit visit;
    visit.version = std::make_shared<vex::ModelVersion>(servedPath, "1", model);
    visit.user = {own, &own->users[0]};
    visit.catalogue = own;
    visit.locale = I18NLocale("en");
    return visit;
}

/// How all trees end and what they hold; "too large" and "refused" where they have none.
struct Trees {
    AnsweredTree objects;
    std::string end;
};

Trees record(vex::Service& service, vex::Visit const& visit, TreeExtent extent) {
    vex::TreeRecorder recorder(visit.locale, {mostElements, mostElements}, extent);
    vex::TreeQuestion question;
    question.collections = vex::collectionsOf(visit.model());
    question.marker = "marker";
    for (vex::TreeStart const& start : vex::treeStartsOf(visit.model(), visit.locale)) {
        if (start.path.empty()) {
            continue;
        }
        question.start = start.path;
        recorder.beginTree();
        KRLIDOM_OwnedDocument const request = question.makeRequest().toDocument();
        vex::CallEnd const end = service.explainTree(visit, request.document(), recorder, {});
        if (!end.isAnswered()) {
            return {{}, recorder.isFull() ? "too large" : "refused: " + end.text};
        }
    }
    return {recorder.take(), ""};
}

/// "id fate", with "behind" what is met behind shortcuts; there, what goes with its container
/// is left out, as nothing of it is shown.
std::set<std::string> factsOf(AnsweredTree const& tree) {
    std::set<std::string> facts;
    for (AnsweredObject const& entry : tree) {
        if (entry.behindShortcut && entry.fate == vex::ObjectFate::WithItsContainer) {
            continue;
        }
        facts.insert(vex::idOf(entry.object).toUtf8() + ' ' +
                     std::to_string(static_cast<int>(entry.fate)) +
                     (entry.behindShortcut ? " behind" : ""));
    }
    return facts;
}

TEST(TreeExtent, OfOnceShowsWhatEveryWayShows) {
    vex::Service service(servingPlugin());
    std::size_t compared = 0;
    std::size_t smaller = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::shared_ptr<vex::Model const> const model = RandomModel(seed).load();
        vex::Visit const visit = visitOf(model);
        Trees const everyWay = record(service, visit, TreeExtent::EveryWay);
        Trees const once = record(service, visit, TreeExtent::Once);
        EXPECT_LE(once.objects.size(), 3 * model->elementCount()) << "seed " << seed;
        if (everyWay.end == "too large") {
            continue;
        }
        EXPECT_EQ(once.end, everyWay.end) << "seed " << seed;
        EXPECT_EQ(factsOf(once.objects), factsOf(everyWay.objects)) << "seed " << seed;
        compared += everyWay.end.empty() ? 1 : 0;
        smaller += once.objects.size() < everyWay.objects.size() ? 1 : 0;
    }
    EXPECT_GT(compared, 100U);
    EXPECT_GT(smaller, 50U);
}

} // namespace
