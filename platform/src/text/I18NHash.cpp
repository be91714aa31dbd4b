#include "I18NHash.h"

#include <chrono>

#include <unistd.h>

namespace {

std::uint64_t makeSeed() noexcept {
    std::uint64_t seed = 0;
    if (::getentropy(&seed, sizeof seed) == 0) {
        return seed;
    }
    // Where the kernel has nothing to give, when and where this runs is what is left.
    auto const now = std::chrono::high_resolution_clock::now().time_since_epoch().count();
    return I18NMixHash(static_cast<std::uint64_t>(now), reinterpret_cast<std::uintptr_t>(&seed),
                       reinterpret_cast<std::uintptr_t>(&I18NHashSeed));
}

} // namespace

std::uint64_t I18NHashSeed() noexcept {
    static std::uint64_t const seed = makeSeed();
    return seed;
}
