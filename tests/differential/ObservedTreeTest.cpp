// What the extension "vex.explain-tree/1" answers, beside what the action does.

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "VexAction.h"
#include "VexNotification.h"
#include "host/content/FileContent.h"
#include "host/import/xml/FileText.h"
#include "host/service/ActionCall.h"
#include "host/service/Visit.h"
#include "tests/differential/CaseRun.h"

#include <filesystem>
#include <functional>

#include <gtest/gtest.h>

namespace {

constexpr std::size_t mostElements = 20'000;

vex::PluginProxy& plugin() {
    static vex::PluginProxy loaded(VEX_PLUGIN_FILE);
    static bool const isReady = (loaded.Initialize(), true);
    (void)isReady;
    return loaded;
}

/// All that is reported, as one text, and how large that makes the answer.
class Reports final : public VexTreeObserver {
public:
    void report(VexTreeReport const& report) override {
        text += std::to_string(report.object.Number()) + ' ' +
                std::to_string(report.target.Number()) + ' ' +
                std::to_string(static_cast<int>(report.treatment)) + ' ' +
                std::to_string(static_cast<int>(report.members)) + ' ' +
                std::to_string(report.container) + ' ' + std::to_string(report.shortcut) + ' ' +
                std::to_string(report.level) + ' ' + report.tag.toUtf8() + '\n';
        elements += report.size.elements;
        if (elements > mostElements) {
            throw KRLLimitException("too large to be compared");
        }
    }
    void reportOutside(VexTreeSize const& size) override { elements += size.elements; }

    std::string text;
    std::size_t elements = 0;
};

/// What came of a request: the document and how it ended.
struct Answer {
    std::string document;
    std::string end;
    std::size_t elements = 0;
    bool isTooLarge = false;
};

using Session = std::function<vex::HostSession()>;

Answer askAction(Session const& open, I18NString const& path, std::string const& request) {
    vex::HostSession session = open();
    vex::ActionValues values;
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(values.text(path));
    in.AddParam(values.node(KRLIDOM_Reader::parse(request, "request")));
    vex::ActionLimits limits;
    limits.response.elements = mostElements;
    vex::ActionOutcome const outcome =
        vex::callAction(plugin(), session, VexVariant(VexAction::MetadataRequest), in, limits);
    plugin().Notify(session, VexNotification::SessionClosed);
    return {KRLIDOM_Writer::toUtf8(outcome.response.document()), outcome.text,
            outcome.response.elementCount(), outcome.end == vex::ActionOutcome::End::Stopped};
}

Answer explain(Session const& open, I18NString const& path, std::string const& request,
               bool isBuilt, Reports& reports) {
    vex::HostSession session = open();
    KRLIDOM_OwnedDocument const asked = KRLIDOM_Reader::parse(request, "request");
    KRLIDOM_Node node = asked.document();
    KRLIDOM_OwnedDocument const made("Response");
    KRLIDOM_Node response = made.document().getDocumentElement();
    response.appendChild(made.document().createElement("Result"));
    Answer answer;
    try {
        plugin().explainTree(session, path, node, isBuilt ? &response : nullptr, reports);
    } catch (KRLException const& problem) {
        answer.end = problem.what();
    }
    answer.document = KRLIDOM_Writer::toUtf8(made.document());
    answer.elements = isBuilt ? made.elementCount() : reports.elements;
    return answer;
}

/// Compares the action with the extension, with and without a response. Gives false
/// when the answer is too large.
bool compare(Session const& open, I18NString const& path, std::string const& request) {
    Answer const expected = askAction(open, path, request);
    if (expected.isTooLarge) {
        return false;
    }
    Reports built;
    Answer const observed = explain(open, path, request, true, built);
    EXPECT_EQ(observed.document, expected.document) << request;
    EXPECT_EQ(observed.end, expected.end) << request;
    Reports notBuilt;
    Answer const counted = explain(open, path, request, false, notBuilt);
    EXPECT_EQ(notBuilt.text, built.text) << request;
    EXPECT_EQ(counted.end, expected.end) << request;
    if (expected.end.empty()) {
        EXPECT_EQ(counted.elements, expected.elements) << request;
    }
    return true;
}

bool isMetadataRequest(naive::SessionStep const& step) {
    using Type = naive::Value::Type;
    return !step.notification && step.action.type == Type::Long &&
           step.action.number == VexAction::MetadataRequest && step.in.size() > 2 &&
           step.in[1].type == Type::String && step.in[2].type == Type::Node;
}

} // namespace

TEST(ObservedTree, IsTheAnswerOfTheActionOnRandomModels) {
    constexpr std::uint64_t lastSeed = 1000;
    std::size_t compared = 0;
    for (std::uint64_t seed = 1; seed <= lastSeed && !testing::Test::HasFailure(); ++seed) {
        naive::GeneratedCase generated = naive::generateCase(seed);
        LoadedWorld const world(std::move(generated.world));
        for (naive::SessionStep const& step : generated.steps) {
            if (isMetadataRequest(step)) {
                SCOPED_TRACE("seed " + std::to_string(seed));
                I18NString const path(std::u16string_view(step.in[1].text));
                compared +=
                    compare([&] { return world.openSession(); }, path, step.in[2].xml) ? 1 : 0;
            }
        }
    }
    EXPECT_GT(compared, lastSeed);
}

TEST(ObservedTree, IsTheAnswerOfTheActionOnTheSampleModel) {
    std::string const samples = VEX_SOURCE_DIR "/samples/";
    vex::FileContent content(vex::loadCatalogue(samples + "retail.catalog.xml"));
    for (auto const& entry : std::filesystem::directory_iterator(samples + "requests")) {
        std::string const request = vex::readFileText(entry.path().string());
        for (char const* const user : {"admin", "ann", "carl"}) {
            SCOPED_TRACE(entry.path().filename().string() + ' ' + user);
            vex::Visit const visit =
                vex::openVisit(content, {"/content/retail", user, I18NLocale("en")});
            EXPECT_TRUE(compare(
                [&] {
                    return vex::HostSession(visit.version->model(), visit.asked, visit.catalogue,
                                            visit.user.get());
                },
                "/content/retail", request));
        }
    }
}
