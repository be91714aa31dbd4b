#include "KRLException.h"
#include "fuzz/FuzzTargets.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

void fuzz::require(bool holds, std::string const& property) {
    if (!holds) {
        std::fprintf(stderr, "broken property: %s\n", property.c_str());
        std::abort();
    }
}

void fuzz::run(void (*target)(std::string_view), std::string_view input) {
    try {
        target(input);
    } catch (KRLLimitException const& limit) {
        require(std::strncmp(limit.what(), "Too many locales", 16) == 0,
                std::string("only names of locales fill a room: ") + limit.what());
    }
}
