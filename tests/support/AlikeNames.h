#pragma once

#include <string>

/// A name for each number below 4096 that a hash which multiplies by 38 and adds, as the one of
/// the XML library does, takes for all others: "bA" weighs as much as "ag".
inline std::string alikeName(unsigned number) {
    constexpr unsigned pairs = 12;
    std::string name;
    for (unsigned pair = 0; pair < pairs; ++pair) {
        name += (number >> pair & 1U) == 0 ? "bA" : "ag";
    }
    return name;
}
