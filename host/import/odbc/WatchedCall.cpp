#include "host/import/odbc/WatchedCall.h"

#include "host/store/image/Budget.h"

#include <chrono>
#include <future>

namespace vex {

namespace {

using namespace std::chrono_literals;

constexpr auto betweenLooks = 20ms;
/// So many steps that the budget looks at its clock each time.
constexpr std::size_t stepsOfALook = 1'000;

} // namespace

void callWatched(std::function<void(std::atomic<bool> const& isEnded)> const& call,
                 std::function<void()> const& cancel) {
    std::atomic<bool> isEnded = false;
    Budget::charge(stepsOfALook);
    std::future<void> done = std::async(std::launch::async, [&call, &isEnded] { call(isEnded); });
    auto const isDone = [&] { return done.wait_for(betweenLooks) == std::future_status::ready; };
    while (!isDone()) {
        try {
            Budget::charge(stepsOfALook);
        } catch (...) {
            isEnded = true;
            do {
                // A call that has not reached the database yet would miss a single one.
                cancel();
            } while (!isDone());
            throw;
        }
    }
    done.get();
}

} // namespace vex
