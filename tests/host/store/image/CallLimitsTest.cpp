#include "host/store/image/CallLimits.h"

#include "KRLException.h"
#include "tests/host/store/image/ModelProbe.h"

#include <gtest/gtest.h>

namespace {

using Clock = std::chrono::steady_clock;

void readALot(VEX_HANDLE object) {
    for (int i = 0; i < 1'000; ++i) {
        ModelProbe::children(object);
    }
}

TEST(CallLimits, DoNotConcernCallsOutsideThem) {
    ModelProbe const probe("<model><a/></model>");
    EXPECT_NO_THROW(readALot(probe.root()));
}

TEST(CallLimits, EndACallOnceItIsCancelled) {
    ModelProbe const probe("<model><a id='1'/></model>");
    std::atomic<bool> cancelled{false};
    vex::CallLimits const limits(std::nullopt, &cancelled);
    EXPECT_NO_THROW(readALot(probe.root()));
    cancelled = true;
    EXPECT_THROW(ModelProbe::children(probe.root()), KRLLimitException);
    EXPECT_THROW(ModelProbe::properties(probe.root()), KRLLimitException);
    EXPECT_THROW(ModelProbe::below(probe.root(), "a"), KRLLimitException);
    EXPECT_THROW(ModelProbe::property(probe.root(), "a"), KRLLimitException);
}

TEST(CallLimits, EndACallOnceItsDeadlineHasPassed) {
    ModelProbe const probe("<model><a/></model>");
    vex::CallLimits const limits(Clock::now() - std::chrono::seconds(1), nullptr);
    EXPECT_THROW(readALot(probe.root()), KRLLimitException);
}

TEST(CallLimits, LeaveACallAloneBeforeItsDeadline) {
    ModelProbe const probe("<model><a/></model>");
    vex::CallLimits const limits(Clock::now() + std::chrono::hours(1), nullptr);
    EXPECT_NO_THROW(readALot(probe.root()));
}

TEST(CallLimits, OfAnInnerCallRuleUntilItEnds) {
    ModelProbe const probe("<model><a/></model>");
    std::atomic<bool> cancelled{true};
    vex::CallLimits const outer(std::nullopt, nullptr);
    {
        vex::CallLimits const inner(std::nullopt, &cancelled);
        EXPECT_THROW(ModelProbe::children(probe.root()), KRLLimitException);
    }
    EXPECT_NO_THROW(ModelProbe::children(probe.root()));
}

} // namespace
