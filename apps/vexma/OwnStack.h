#pragma once

namespace vex {

/// The stack that the program works on: what it was started with, or one of its own where
/// that is small. Models nest deeper than a small one allows.
class OwnStack {
public:
    /// Runs the function there and gives what it gives; on a stack of its own the process
    /// ends with that instead.
    static int run(int (*function)(int, char**), int argc, char** argv);

    /// Whether something lies just past the end of it, where only who uses it up gets to.
    /// Handlers of signals may ask.
    static bool isPastEnd(void const* address);
};

} // namespace vex
