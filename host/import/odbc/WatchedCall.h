#pragma once

#include <atomic>
#include <functional>

namespace vex {

/// Makes a call that may wait for long on a thread of its own, while this thread watches its
/// `Budget`. When that ends the work, the call's flag is set, `cancel` is called until the
/// call has ended, and the budget's failure is raised; else what the call raised.
void callWatched(std::function<void(std::atomic<bool> const& isEnded)> const& call,
                 std::function<void()> const& cancel);

} // namespace vex
