#include "fuzz/FuzzTargets.h"

#include <cstdio>
#include <cstdlib>

void fuzz::require(bool holds, std::string const& property) {
    if (!holds) {
        std::fprintf(stderr, "broken property: %s\n", property.c_str());
        std::abort();
    }
}
