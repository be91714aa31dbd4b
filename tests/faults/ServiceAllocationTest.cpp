// Memory fails inside of typed calls: session pool, plug-in, what tells the end.

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "host/content/MemoryContent.h"
#include "host/insight/ObjectText.h"
#include "host/service/Service.h"
#include "tests/faults/FaultModel.h"
#include "tests/faults/FaultRun.h"
#include "tests/faults/FaultSession.h"

#include <memory>
#include <new>

#include <gtest/gtest.h>

namespace {

/// A service of its own, with the model and the catalogue of these tests.
class FaultService {
public:
    explicit FaultService(std::size_t mostIdleSessions)
        : m_content(FaultSession::catalogue()),
          m_service(FaultSession::sharedPlugin(), mostIdleSessions) {
        m_content.setModel("/content/m", FaultSession::model());
    }

    vex::Visit visit() {
        return vex::openVisit(m_content, {"/content/m", "carl", I18NLocale("de_AT")});
    }
    vex::Service& service() { return m_service; }

private:
    vex::MemoryContent m_content;
    vex::Service m_service;
};

// How a call ended; `std::bad_alloc` when memory ended it.
std::string endOf(vex::CallEnd const& end) {
    if (end.kind == vex::CallEnd::Kind::Stopped) {
        throw std::bad_alloc();
    }
    return end.failure ? std::to_string(end.failure->id) + ' ' + end.text : "answered";
}

Vex_Handle_Collection objectsOf(vex::Visit const& visit) {
    Vex_Handle_Collection objects;
    for (char const* const id : {"i", "x", "j", "n"}) {
        objects.push_back(visit.model().findById(id));
    }
    return objects;
}

std::string askTree(FaultService& on, vex::MetadataRequest const& request) {
    vex::MetadataAnswer const answer = on.service().metadata(on.visit(), request, {});
    return endOf(answer.end) + ' ' + KRLIDOM_Writer::toUtf8(answer.response.document());
}

std::string askWholeTree(FaultService& on) {
    return askTree(on, {.properties = {"*/@name", "*/@_path", "*/@_ref"}, .collections = {"*/*"}});
}

std::string askForNothing(FaultService& on) {
    return askTree(on, {.start = "[Vertrieb].[There is no such object in this model]"});
}

std::string askAccess(FaultService& on) {
    vex::Visit const visit = on.visit();
    vex::AccessAnswer const answer = on.service().access(visit, objectsOf(visit), 0, {});
    std::string text = endOf(answer.end);
    for (bool const verdict : answer.verdicts) {
        text += verdict ? " 1" : " 0";
    }
    return text;
}

std::string explainAccess(FaultService& on) {
    vex::Visit const visit = on.visit();
    vex::AccessReasons const reasons =
        on.service().explainAccess(visit, objectsOf(visit), false, {});
    std::string text = endOf(reasons.end);
    for (VexExplainedObject const& object : reasons.explanation.objects) {
        text += ' ' + object.id.toUtf8() + ':' + std::to_string(static_cast<int>(object.reason)) +
                'x' + std::to_string(object.mentions.size());
    }
    return text + " of " + std::to_string(reasons.explanation.views.size());
}

/// Writes down what is reported: "id treatment".
class Notes final : public VexTreeObserver {
public:
    void report(VexTreeReport const& report) override {
        m_text += ' ' + vex::idOf(report.object).toUtf8() + ' ' +
                  std::to_string(static_cast<int>(report.treatment));
    }
    void reportOutside(VexTreeSize const&) override {}

    std::string const& text() const { return m_text; }

private:
    std::string m_text;
};

std::string explainTree(FaultService& on) {
    KRLIDOM_OwnedDocument const request = KRLIDOM_Reader::parse(
        R"(<Metadata><Property name="*/@name"/><Property name="*/*"/></Metadata>)", "request");
    Notes notes;
    std::string const end =
        endOf(on.service().explainTree(on.visit(), request.document(), notes, {}));
    return end + notes.text();
}

struct ServiceCall {
    char const* name;
    std::string (*ask)(FaultService&);
    char const* expected; // a part of the answer
};

ServiceCall const calls[] = {
    {"Tree", askWholeTree, "answered <Response><Result><folder "},
    {"RefusedTree", askForNothing, "1171025905 "},
    {"Access", askAccess, "answered 1 0 0 1"},
    {"AccessExplanation", explainAccess, "answered i:"},
    {"TreeExplanation", explainTree, "answered n 0 f 0 q 0 i 0"},
};

class AllocationFailureOfService : public testing::TestWithParam<ServiceCall> {};

// The session of a call is kept, or closed at its end.
constexpr std::size_t mostIdleSessions[] = {4, 0};

TEST_P(AllocationFailureOfService, LeavesNothingAndTheNextCallAnswersRight) {
    auto const ask = GetParam().ask;
    for (std::size_t const idle : mostIdleSessions) {
        FaultService other(idle);
        std::string const expected = ask(other);
        EXPECT_NE(expected.find(GetParam().expected), std::string::npos) << expected;
        FaultRun run;
        run.expected = expected;
        run.prepare = [&] {
            auto const fresh = std::make_shared<FaultService>(idle);
            return [fresh, ask, &expected] {
                try {
                    return ask(*fresh);
                } catch (...) {
                    failingMemory::Pause const pause;
                    EXPECT_EQ(ask(*fresh), expected);
                    throw;
                }
            };
        };
        run.check = [&] { EXPECT_EQ(ask(other), expected); };
        failEveryAllocation(run);
    }
}

TEST_P(AllocationFailureOfService, LeavesTheIdleSessionOfEarlierCallsOrClosesIt) {
    auto const ask = GetParam().ask;
    FaultService other(1);
    std::string const expected = ask(other);
    FaultRun run;
    run.expected = expected;
    run.prepare = [&] {
        auto const warm = std::make_shared<FaultService>(1);
        EXPECT_EQ(ask(*warm), expected);
        return [warm, ask, &expected] {
            try {
                return ask(*warm);
            } catch (...) {
                failingMemory::Pause const pause;
                EXPECT_EQ(ask(*warm), expected);
                throw;
            }
        };
    };
    run.check = [&] { EXPECT_EQ(ask(other), expected); };
    failEveryAllocation(run);
}

INSTANTIATE_TEST_SUITE_P(Calls, AllocationFailureOfService, testing::ValuesIn(calls),
                         [](auto const& tested) { return std::string(tested.param.name); });

} // namespace
