#include "host/import/odbc/WatchedCall.h"

#include "KRLException.h"
#include "host/store/image/Budget.h"

#include <thread>

#include <gmock/gmock.h>

namespace {

TEST(WatchedCall, IsMadeWhereNoBudgetIs) {
    bool isMade = false;
    vex::callWatched([&](std::atomic<bool> const&) { isMade = true; }, [] {});
    EXPECT_TRUE(isMade);
}

TEST(WatchedCall, RaisesWhatTheCallRaised) {
    EXPECT_THROW(vex::callWatched([](std::atomic<bool> const&) { throw std::bad_alloc(); }, [] {}),
                 std::bad_alloc);
}

TEST(WatchedCall, IsNotMadeOnceItWasCancelled) {
    std::atomic<bool> const cancelled = true;
    vex::Budget const budget({.cancelled = &cancelled});
    bool isMade = false;
    EXPECT_THROW(vex::callWatched([&](std::atomic<bool> const&) { isMade = true; }, [] {}),
                 KRLLimitException);
    EXPECT_FALSE(isMade);
}

TEST(WatchedCall, IsCancelledUntilItEndsWhenTheBudgetEndsTheWork) {
    std::atomic<bool> cancelled = false;
    std::atomic<int> asked = 0;
    vex::Budget const budget({.cancelled = &cancelled});
    auto const call = [&](std::atomic<bool> const& isEnded) {
        cancelled = true;
        while (asked < 3 || !isEnded) { // what does not hear the first ones
            std::this_thread::yield();
        }
    };
    EXPECT_THROW(vex::callWatched(call, [&] { ++asked; }), KRLLimitException);
    EXPECT_GE(asked, 3);
}

} // namespace
