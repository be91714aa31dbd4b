#pragma once

namespace vex {

/// Where something stands in a document; lines and columns count from 1.
struct DocumentPosition {
    unsigned long line = 0;
    unsigned long column = 0;
};

} // namespace vex
