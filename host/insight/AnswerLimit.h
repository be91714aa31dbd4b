#pragma once

#include "KRLException.h"

#include <cstddef>
#include <string>

namespace vex {

/// Ends the counting of an answer as a document's limit would have ended it.
[[noreturn]] inline void raiseAnswerTooLarge(std::size_t elementLimit) {
    throw KRLLimitException("The answer holds more than " + std::to_string(elementLimit) +
                            " elements, which is the limit. Ask for less with \"Depth\" or a start "
                            "path, or raise the limit with --max-elements.");
}

} // namespace vex
