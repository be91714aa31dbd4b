// Each operation of the host is made to raise, one after the other, in a whole
// action of the plug-in.

#include "VexAnswerAt.h"
#include "tests/faults/FailingMemory.h"
#include "tests/faults/FaultModel.h"
#include "tests/plugin/PluginCase.h"
#include "tests/support/ExpectFailure.h"

#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

extern "C" void const* VexPlugin_getExtension(char const* id);

namespace {

struct Action {
    char const* name;
    std::function<void(PluginCase&)> run;
};

void ask(PluginCase& scene, std::string const& xml) {
    TestRequest request(xml);
    I18NString modelPath("/content/m");
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(&modelPath));
    in.AddParam(VexVariant(&request.node()));
    scene.act(PluginCase::Metadata, in);
}

constexpr char const* wholeTree =
    R"(<Metadata Depth="0"><Property name="*/@*"/><Property name="*/@_path"/>
       <Property name="*/@_ref"/><Property name="*/*"/>
       <Property name="/@supportedLocales"/></Metadata>)";

Action const actions[] = {
    {"WholeTree", [](PluginCase& scene) { ask(scene, wholeTree); }},
    {"WholeTreeWithSetsReady",
     [](PluginCase& scene) {
         scene.model.offerTextSets();
         ask(scene, wholeTree);
     }},
    {"Reference",
     [](PluginCase& scene) {
         ask(scene,
             R"(<Metadata start_atRef="[Sales of every store and of the shop on the web].[Orders].[Ordered]">
                <Property name="*/@name"/><Property name="*/@_ref"/></Metadata>)");
     }},
    {"Package",
     [](PluginCase& scene) {
         ask(scene, R"(<Metadata><Functions scope="package"/>
                       <Property name="package/@screenTip"/></Metadata>)");
     }},
    {"AnswerAtAnObject",
     [](PluginCase& scene) {
         TestRequest request(R"(<Metadata><Property name="*/@*"/><Property name="*/@_path"/>
                                <Property name="*/@_ref"/><Property name="*/*"/></Metadata>)");
         scene.out.clear(); // nothing is appended: the two entries stand for the host's own
         scene.out.AddParam(VexVariant(0L));
         scene.out.AddParam(VexVariant(&scene.response.node()));
         static_cast<VexAnswerAt const*>(VexPlugin_getExtension(VexAnswerAt::Id))
             ->answer(scene.session, "/content/m", request.node(), &scene.response.node(),
                      scene.model.byId("q"), nullptr);
     }},
    {"Accessibility", [](PluginCase& scene) { scene.askAccess("i"); }},
    {"AccessibilityWithSetsReady",
     [](PluginCase& scene) {
         scene.model.offerTextSets();
         scene.askAccess("i");
     }},
};

struct Answer {
    std::string response;
    std::size_t appended;
};

Answer answerOf(PluginCase& scene, Action const& action) {
    scene.response = TestResponse();
    action.run(scene);
    return {scene.response.text(), scene.out.size()};
}

// The elements of a document by name, in document order.
std::vector<std::string> elementsOf(std::string const& text) {
    std::vector<std::string> names;
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1)) {
        if (text[at + 1] != '/') {
            names.push_back(text.substr(at + 1, text.find_first_of(" />", at) - at - 1));
        }
    }
    return names;
}

bool isPartOf(std::string const& answer, std::string const& whole) {
    std::vector<std::string> const all = elementsOf(whole);
    auto at = all.begin();
    for (std::string const& name : elementsOf(answer)) {
        at = std::find(at, all.end(), name);
        if (at == all.end()) {
            return false;
        }
        ++at;
    }
    return true;
}

class HostOperation : public testing::TestWithParam<Action> {};

TEST_P(HostOperation, RaisesThroughAFirstActionAndTheNextIsAnswered) {
    PluginCase whole(faultModel);
    whole.session.setPackage("Sales", {{"screenTip", "All of it"}});
    whole.model.calls().reset();
    Answer const expected = answerOf(whole, GetParam());
    int const calls = whole.model.calls().total();
    ASSERT_GT(calls, 5);
    int partial = 0;
    for (int nth = 1; nth <= calls; ++nth) {
        PluginCase scene(faultModel);
        scene.session.setPackage("Sales", {{"screenTip", "All of it"}});
        scene.response = TestResponse();
        scene.model.calls().failAt(nth);
        expectInjectedFailure([&] { GetParam().run(scene); });
        EXPECT_EQ(scene.out.size(), 2U) << nth; // nothing but the host's own entries
        partial += elementsOf(scene.response.text()).size() > 2 ? 1 : 0;
        EXPECT_TRUE(isPartOf(scene.response.text(), expected.response))
            << nth << ": " << scene.response.text();
        Answer const next = answerOf(scene, GetParam());
        EXPECT_EQ(next.response, expected.response) << nth;
        EXPECT_EQ(next.appended, expected.appended) << nth;
    }
    if (elementsOf(expected.response).size() > 3) {
        EXPECT_GT(partial, 0); // what stood in the response by then stays there
    }
}

TEST_P(HostOperation, RaisesThroughALaterActionWithoutKeepingMemory) {
    PluginCase scene(faultModel);
    scene.session.setPackage("Sales", {{"screenTip", "All of it"}});
    std::string const expected = answerOf(scene, GetParam()).response;
    scene.model.calls().reset();
    EXPECT_EQ(answerOf(scene, GetParam()).response, expected);
    int const calls = scene.model.calls().total();
    scene.response = TestResponse();
    scene.out.clear();
    for (int nth = 1; nth <= calls; ++nth) {
        scene.model.calls().failAt(nth);
        long const before = failingMemory::liveBlocks();
        bool raised = false;
        try {
            GetParam().run(scene);
        } catch (VexException const& failure) {
            raised = failure.GetId() == CallCounter::InjectedFailure;
        }
        EXPECT_TRUE(raised) << nth;
        scene.response = TestResponse();
        EXPECT_EQ(failingMemory::liveBlocks(), before) << nth;
    }
    EXPECT_EQ(answerOf(scene, GetParam()).response, expected);
}

INSTANTIATE_TEST_SUITE_P(Actions, HostOperation, testing::ValuesIn(actions),
                         [](auto const& tested) { return std::string(tested.param.name); });

TEST(HostOperation, RaisesThroughANotificationWhichCanBeSentAgain) {
    PluginCase scene(faultModel);
    std::string const expected = answerOf(scene, actions[0]).response;
    scene.model.calls().failAt(1);
    expectInjectedFailure([&] { scene.notify(VexNotification::SessionClosed); });
    EXPECT_EQ(answerOf(scene, actions[0]).response, expected);
    scene.notify(VexNotification::SessionClosed);
    EXPECT_EQ(answerOf(scene, actions[0]).response, expected);
}

} // namespace
