#include "host/store/image/TextHash.h"

#include <random>

namespace vex {

namespace {

std::uint64_t makeSeed() {
    constexpr unsigned half = 32;
    std::random_device device;
    return (static_cast<std::uint64_t>(device()) << half) | device();
}

} // namespace

std::uint64_t hashSeed() {
    static std::uint64_t const seed = makeSeed();
    return seed;
}

} // namespace vex
