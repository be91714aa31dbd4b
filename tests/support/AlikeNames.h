#pragma once

#include <cstdint>
#include <cstring>
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

/// Ids of eight units that a hash of multiplications and shifts, without a seed, takes for one:
/// the second half undoes what the first one did.
inline std::u16string alikeId(std::uint64_t number) {
    constexpr std::uint64_t factor = 0x9E37'79B9'7F4A'7C15;
    std::uint64_t const first = number * 0x0001'0001'0001'0001;
    std::uint64_t state = (8 * factor ^ first) * factor;
    state ^= state >> 32U;
    std::uint64_t const second = state ^ 0x0123'4567'89AB'CDEF;
    std::u16string id(8, u'\0');
    std::memcpy(id.data(), &first, sizeof first);
    std::memcpy(id.data() + 4, &second, sizeof second);
    return id;
}
