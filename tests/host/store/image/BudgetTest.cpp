#include "host/store/image/Budget.h"

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

TEST(Budget, DoesNotConcernCallsOutsideIt) {
    ModelProbe const probe("<model><a/></model>");
    EXPECT_NO_THROW(readALot(probe.root()));
}

TEST(Budget, EndsACallOnceItIsCancelled) {
    ModelProbe const probe("<model><a id='1'/></model>");
    std::atomic<bool> cancelled{false};
    vex::Budget const budget({.cancelled = &cancelled});
    EXPECT_NO_THROW(readALot(probe.root()));
    cancelled = true;
    EXPECT_THROW(ModelProbe::children(probe.root()), KRLLimitException);
    EXPECT_THROW(ModelProbe::properties(probe.root()), KRLLimitException);
    EXPECT_THROW(ModelProbe::below(probe.root(), "a"), KRLLimitException);
    EXPECT_THROW(ModelProbe::property(probe.root(), "a"), KRLLimitException);
}

TEST(Budget, EndsACallOnceItsDeadlineHasPassed) {
    ModelProbe const probe("<model><a/></model>");
    vex::Budget const budget({.deadline = Clock::now() - std::chrono::seconds(1)});
    EXPECT_THROW(readALot(probe.root()), KRLLimitException);
}

TEST(Budget, LeavesACallAloneBeforeItsDeadline) {
    ModelProbe const probe("<model><a/></model>");
    vex::Budget const budget({.deadline = Clock::now() + std::chrono::hours(1)});
    EXPECT_NO_THROW(readALot(probe.root()));
}

TEST(Budget, OfAnInnerCallHoldsUntilThatEnds) {
    ModelProbe const probe("<model><a/></model>");
    std::atomic<bool> cancelled{true};
    vex::Budget const outer({});
    {
        vex::Budget const inner({.cancelled = &cancelled});
        EXPECT_THROW(ModelProbe::children(probe.root()), KRLLimitException);
    }
    EXPECT_NO_THROW(ModelProbe::children(probe.root()));
}

TEST(Budget, OfAnOuterCallEndsTheInnerOnesToo) {
    ModelProbe const probe("<model><a/></model>");
    std::atomic<bool> cancelled{true};
    vex::Budget const outer({.cancelled = &cancelled});
    vex::Budget const inner({});
    EXPECT_THROW(ModelProbe::children(probe.root()), KRLLimitException);
}

TEST(Budget, CountsTheStepsOfInnerCallsToo) {
    vex::Budget const outer({.steps = 10});
    vex::Budget::charge(3);
    {
        vex::Budget const inner({});
        vex::Budget::charge(4);
        EXPECT_EQ(inner.stepsDone(), 4U);
    }
    EXPECT_EQ(outer.stepsDone(), 7U);
    EXPECT_FALSE(outer.isSpent());
    EXPECT_NO_THROW(vex::Budget::charge(3));
    EXPECT_THROW(vex::Budget::charge(), KRLLimitException);
    EXPECT_TRUE(outer.isSpent());
    EXPECT_THROW(vex::Budget::charge(vex::Budget::Unlimited), KRLLimitException);
}

TEST(Budget, CountsTheBytesThatACallHolds) {
    vex::Budget const outer({.bytes = 100});
    vex::Budget const inner({});
    EXPECT_NO_THROW(vex::Budget::chargeBytes(100));
    EXPECT_THROW(vex::Budget::chargeBytes(1), KRLLimitException);
    EXPECT_EQ(inner.bytesHeld(), 101U);
}

TEST(Budget, LetsWhatMayOnlyBeCancelledGoPastTheDeadline) {
    std::atomic<bool> cancelled{false};
    vex::Budget const outer({.cancelled = &cancelled});
    vex::Budget const inner({.deadline = Clock::now() - std::chrono::seconds(1)});
    EXPECT_NO_THROW(vex::Budget::checkCancelled());
    cancelled = true;
    EXPECT_THROW(vex::Budget::checkCancelled(), KRLLimitException);
}

} // namespace
