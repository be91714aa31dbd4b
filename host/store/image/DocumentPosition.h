#pragma once

namespace vex {

/// Where something stands in a document; lines and columns count from 1.
struct DocumentPosition {
    unsigned long line = 0;
    unsigned long column = 0;
};

/// Where a locator or a parse error of the XML library points to. The library's
/// numbers are wider than ours on some machines.
template <typename Located> DocumentPosition positionOf(Located const& at) {
    return {static_cast<unsigned long>(at.getLineNumber()),
            static_cast<unsigned long>(at.getColumnNumber())};
}

} // namespace vex
