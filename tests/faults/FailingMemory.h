#pragma once

#include <cstddef>

/// Counts what this thread allocates (`new`, what the XML library takes, ICU's
/// memory and the growing arrays of a model) and lets some of it fail.
namespace failingMemory {

enum class Mode {
    Once,       // one allocation fails, those after it succeed
    FromThenOn, // that one and all after it fail
};

/// Blocks of this thread that are allocated now.
long liveBlocks();

/// While it lives, the nth allocation of this thread fails; 0 lets none fail.
class Scope {
public:
    Scope(std::size_t nth, Mode mode);
    ~Scope();
    Scope(Scope const&) = delete;
    Scope& operator=(Scope const&) = delete;

    /// True once an allocation has failed.
    bool hasFailed() const;
};

/// While it lives nothing fails, and the allocations are not counted down.
class Pause {
public:
    Pause();
    ~Pause();
    Pause(Pause const&) = delete;
    Pause& operator=(Pause const&) = delete;

private:
    std::size_t m_untilFailure;
};

} // namespace failingMemory
