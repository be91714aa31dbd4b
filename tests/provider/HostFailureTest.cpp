// Each call of the host may fail: the failure passes, and the next request is
// answered.

#include "KRLException.h"
#include "tests/provider/ProviderScene.h"
#include "tests/support/Casts.h"

#include <gtest/gtest.h>

namespace {

constexpr char Asked[] = "<Property a='*/@_path'/><Property a='*/@_ref'/><Property a='*/folder'/>"
                         "<Property a='*/querySubject'/><Property a='*/queryItem'/>"
                         "<Property a='*/filter'/><Property a='/@supportedLocales'/></Metadata>";

struct FailingScene : ProviderScene {
    FailingScene() : ProviderScene(casts::shopOfAllRoads(), "/content/m") {
        session.setViews({"v"});
        session.setRoles({"clerk"});
    }
};

class HostFailure : public testing::TestWithParam<char const*> {};

TEST_P(HostFailure, PassesAndLeavesTheProviderReadyWhicheverCallItIs) {
    std::string const request = std::string("<Metadata ") + GetParam() + ">" + Asked;
    FailingScene whole;
    whole.session.calls().reset();
    std::string const answer = whole.askForResponse(request);
    int const calls = whole.session.calls().total();
    ASSERT_GT(calls, 50);
    for (int nth = 1; nth <= calls; ++nth) {
        FailingScene scene;
        scene.session.calls().failAt(nth);
        expectInjectedFailure([&] { scene.askForResponse(request); });
        EXPECT_EQ(scene.askForResponse(request), answer) << nth;
    }
}

TEST(ResponseLimit, PassesAndKeepsWhatIsWritten) {
    FailingScene scene;
    TestRequest request("<Metadata><Property a='*/@name'/><Property a='*/*'/></Metadata>");
    KRLIDOM_Limits limits;
    limits.elements = 3; // two of them are the response's own
    TestResponse response(limits);
    EXPECT_THROW(scene.provider.doRequest(request.node(), response.node()), KRLLimitException);
    EXPECT_EQ(response.resultText(), R"(<folder name="Sales"/>)");
    EXPECT_EQ(scene.ask("<Metadata Depth='1'><Property a='*/@name'/></Metadata>"),
              R"(<folder name="Sales"/>)");
}

INSTANTIATE_TEST_SUITE_P(Requests, HostFailure,
                         testing::Values("", "start_at='[Sales].[Again]'",
                                         "start_at='[Sales].[Facts].[Orders].[Quantity]'",
                                         "start_atRef='[Hidden].[Open]'",
                                         "start_atRef='[Sales].[Again].[Quantity]'"));

} // namespace
