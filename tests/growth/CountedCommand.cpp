// Linked into the program `vexma_counted`: writes what it counted to the file that VEXMA_COUNTS
// names, when the program ends.

#include "tests/growth/Counts.h"

#include <cstdlib>
#include <fstream>

namespace {

struct CountsAtEnd {
    ~CountsAtEnd() {
        if (char const* const file = std::getenv("VEXMA_COUNTS")) {
            Counts const counts = countsNow();
            std::ofstream(file) << counts.steps << ' ' << counts.allocations << ' ' << counts.bytes
                                << ' ' << counts.peak << '\n';
        }
    }
} const atEnd;

} // namespace
