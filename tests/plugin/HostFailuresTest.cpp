#include "tests/plugin/PluginCase.h"
#include "tests/support/Casts.h"
#include "tests/support/ExpectFailure.h"

#include <gtest/gtest.h>

namespace {

// One wide request, answered into a fresh response.
std::string ask(PluginCase& on) {
    TestRequest request(R"(<Metadata Depth="4">
        <Property name="*/@name"/><Property name="*/@_path"/><Property name="*/@_ref"/>
        <Property name="/@supportedLocales"/>
        <Property name="*/folder"/><Property name="*/querySubject"/><Property name="*/queryItem"/>
        </Metadata>)");
    on.response = TestResponse();
    I18NString path("/content/m");
    VexParams in;
    for (VexVariant const& value :
         {VexVariant(0L), VexVariant(&path), VexVariant(&request.node())}) {
        in.AddParam(value);
    }
    on.act(PluginCase::Metadata, in);
    return on.response.text();
}

} // namespace

TEST(HostFailures, WhateverCallRaisesComesOutAndTheNextRequestIsAnswered) {
    PluginCase undisturbed(casts::shopOfAllRoads());
    std::string const answer = ask(undisturbed);
    int const calls = undisturbed.model.calls().total();
    EXPECT_NE(answer.find("Quantity"), std::string::npos);
    ASSERT_GT(calls, 100);
    PluginCase on(casts::shopOfAllRoads());
    for (int nth = 1; nth <= calls; ++nth) {
        // A session that starts afresh makes the same calls every time.
        on.notify(VexNotification::ModelReloaded);
        on.model.calls().failAt(nth);
        expectInjectedFailure([&] { ask(on); });
        EXPECT_EQ(on.out.size(), 2U) << nth;
        EXPECT_EQ(ask(on), answer) << nth;
    }
}

TEST(HostFailures, AnElementLimitComesOutAndTheNextRequestIsAnswered) {
    PluginCase on(casts::shopOfAllRoads());
    std::string const answer = ask(on);
    KRLIDOM_Limits limits;
    limits.elements = 2;
    on.response = TestResponse(limits);
    EXPECT_THROW(on.askMetadata(), KRLLimitException);
    EXPECT_EQ(on.response.text(), "<Response><Result/></Response>");
    EXPECT_EQ(ask(on), answer);
}
