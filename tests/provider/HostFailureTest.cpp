// Each call of the host may fail: the failure passes, and the next request is
// answered.

#include "KRLException.h"
#include "tests/provider/ProviderScene.h"

#include <gtest/gtest.h>

namespace {

constexpr char Model[] = R"(
<model id="m" defaultLocale="en"><locales><locale>en</locale><locale>de</locale></locales>
  <namespace id="n" name="Sales">
    <folder id="f" name="Facts">
      <querySubject id="q" name="Orders"><queryItem id="i" name="Quantity"/></querySubject>
    </folder>
    <shortcut id="s" name="Link" refobj="[Sales].[Orders]"/>
    <namespace id="hidden" name="Hidden"><filter id="x" name="Open"/></namespace>
  </namespace>
  <securityViews><securityView id="v"><set kind="included"><item>n</item><item>q</item>
    <item>i</item><item>x</item></set></securityView></securityViews>
</model>)";

constexpr char Asked[] = "<Property a='*/@_path'/><Property a='*/@_ref'/><Property a='*/folder'/>"
                         "<Property a='*/querySubject'/><Property a='*/queryItem'/>"
                         "<Property a='*/filter'/><Property a='/@supportedLocales'/></Metadata>";

struct FailingScene : ProviderScene {
    FailingScene() : ProviderScene(Model, "/content/m") {
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
                         testing::Values("", "start_at='[Sales].[Link]'",
                                         "start_at='[Sales].[Facts].[Orders].[Quantity]'",
                                         "start_atRef='[Hidden].[Open]'",
                                         "start_atRef='[Sales].[Link].[Quantity]'"));

} // namespace
