#include "host/service/ActionCall.h"

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "tests/host/service/BadPlugins.h"
#include "tests/host/service/RuleBreaker.h"
#include "tests/host/service/SmallModel.h"

#include <functional>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using End = vex::ActionOutcome::End;

class ActionCallTest : public testing::Test {
protected:
    ActionCallTest() { m_plugin.Initialize(); }

    vex::ActionOutcome Call(long action, vex::ActionLimits const& limits = {}) {
        return vex::callAction(m_plugin, m_session, VexVariant(action), VexParams(), limits);
    }

    vex::PluginProxy m_plugin{badPluginFile("RuleBreaker"), "RuleBreaker"};
    vex::HostSession m_session{smallModel(), I18NLocale(), nullptr, nullptr};
};

TEST_F(ActionCallTest, HandsInAResponseWithOneEmptyResult) {
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(Call(ruleBreaker::Answer).response.document()),
              "<Response><Result/></Response>");
}

TEST_F(ActionCallTest, GivesTheCodeAndWhatWasAppended) {
    vex::ActionOutcome const outcome = Call(ruleBreaker::Answer);
    EXPECT_EQ(outcome.end, End::Returned);
    EXPECT_EQ(outcome.code, VexErrorCode::Handled);
    ASSERT_EQ(outcome.appended.size(), 3U);
    EXPECT_EQ(static_cast<long>(outcome.appended[0]), 7);
    EXPECT_EQ(outcome.appended[1].GetType(), VexVariant::Pointer);
    EXPECT_EQ(outcome.appended[2].GetType(), VexVariant::Empty);
}

TEST_F(ActionCallTest, GivesWhatThePluginRaised) {
    vex::ActionOutcome const outcome = Call(ruleBreaker::Raise);
    EXPECT_EQ(outcome.end, End::Raised);
    ASSERT_TRUE(outcome.raised.has_value());
    EXPECT_EQ(outcome.raised->GetId(), 5U);
    EXPECT_EQ(outcome.raised->GetLocation().line, 12);
    EXPECT_EQ(outcome.text, outcome.raised->what());
}

TEST_F(ActionCallTest, TellsABrokenRuleFromAFailure) {
    vex::ActionOutcome const outcome = Call(ruleBreaker::ThrowInt);
    EXPECT_EQ(outcome.end, End::Stopped);
    EXPECT_FALSE(outcome.raised.has_value());
    EXPECT_THAT(outcome.text, HasSubstr("RuleBreaker.vpl"));
}

TEST_F(ActionCallTest, StopsAtTheDeadline) {
    vex::ActionLimits limits;
    limits.time = std::chrono::milliseconds(20);
    vex::ActionOutcome const outcome = Call(ruleBreaker::ReadForEver, limits);
    EXPECT_EQ(outcome.end, End::Stopped);
    EXPECT_THAT(outcome.text, HasSubstr("deadline"));
}

TEST_F(ActionCallTest, StopsWhenItIsCancelled) {
    std::atomic<bool> const cancelled{true};
    vex::ActionLimits limits;
    limits.cancelled = &cancelled;
    vex::ActionOutcome const outcome = Call(ruleBreaker::ReadForEver, limits);
    EXPECT_EQ(outcome.end, End::Stopped);
    EXPECT_THAT(outcome.text, HasSubstr("cancelled"));
}

TEST_F(ActionCallTest, StopsWhenTheResponseHasAllItsElements) {
    vex::ActionLimits limits;
    limits.response.elements = 5;
    vex::ActionOutcome const outcome = Call(ruleBreaker::GrowForEver, limits);
    EXPECT_EQ(outcome.end, End::Stopped);
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(outcome.response.document()),
              "<Response><Result/><more/><more/><more/></Response>");
}

TEST_F(ActionCallTest, StopsWhenTheResponseHasAllItsMemory) {
    vex::ActionLimits limits;
    limits.response.bytes = 1U << 20U;
    EXPECT_EQ(Call(ruleBreaker::GrowForEver, limits).end, End::Stopped);
    EXPECT_EQ(Call(ruleBreaker::Answer).end, End::Returned);
}

TEST(ActionValues, StayWhereTheyAreWhenMoreAreAdded) {
    vex::ActionValues values;
    VexVariant const text = values.text("first");
    VexVariant const node = values.node(KRLIDOM_Reader::parse("<a/>", "a"));
    for (int count = 0; count < 100; ++count) {
        values.text("more");
        values.node(KRLIDOM_Reader::parse("<b/>", "b"));
    }
    EXPECT_EQ(*static_cast<I18NString*>(text), "first");
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(*static_cast<KRLIDOM_Node*>(node)), "<a/>");
}

} // namespace
