#pragma once

#include "apps/vexma/Console.h"

namespace vex {

/// While it lives, the program does not end without a word: when a plug-in ends it (`exit`,
/// `quick_exit`, `_exit`, `abort`, an exception that nobody can catch), or when its stack is
/// used up, it says so, takes the results back and ends with status 1. A crash is told with
/// the plug-in that it happened in, and ends the program as ever. What cannot be noticed is
/// a system call that a plug-in makes itself. One at a time.
class UntimelyEnd {
public:
    /// The console outlives it.
    explicit UntimelyEnd(Console& console);
    UntimelyEnd(UntimelyEnd const&) = delete;
    UntimelyEnd& operator=(UntimelyEnd const&) = delete;
    ~UntimelyEnd();
};

} // namespace vex
