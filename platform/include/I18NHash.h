#pragma once

#include "VexExport.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// A number that nobody outside of the process can foresee, the same for its whole life and
/// for all of its libraries. What is hashed with it cannot be chosen to hash alike, so every
/// table of texts from outside takes it: those keyed by `I18NString` as they are, those of
/// other texts with `I18NTextHasher`. Never raises. Threads: any.
VEX_PLATFORM_API std::uint64_t I18NHashSeed() noexcept;

/// The product of two numbers, its upper half laid over its lower one: from
/// products of their halves, for machines that have no wider ones.
constexpr std::uint64_t I18NFoldedProductOfHalves(std::uint64_t a, std::uint64_t b) {
    constexpr unsigned half = 32;
    constexpr std::uint64_t low = 0xFFFF'FFFF;
    std::uint64_t const inner = (a & low) * (b & low);
    std::uint64_t const mixed = (a >> half) * (b & low) + (inner >> half);
    std::uint64_t const other = (a & low) * (b >> half) + (mixed & low);
    std::uint64_t const upper = (a >> half) * (b >> half) + (mixed >> half) + (other >> half);
    return upper ^ ((other << half) | (inner & low));
}

/// The same in the quickest way.
constexpr std::uint64_t I18NFoldedProduct(std::uint64_t a, std::uint64_t b) {
#ifdef __SIZEOF_INT128__
    __extension__ using Wide = unsigned __int128;
    constexpr unsigned wordBits = 64;
    Wide const product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> wordBits);
#else
    return I18NFoldedProductOfHalves(a, b);
#endif
}

/// Mixes two numbers into one; every bit of the result depends on both and on the seed.
constexpr std::uint64_t I18NMixHash(std::uint64_t a, std::uint64_t b, std::uint64_t seed) {
    // The seed hides both sides: who knew how to make one of them 0 would make every
    // product 0.
    constexpr std::uint64_t factor = 0xE703'7ED1'A0B4'28DB;
    return I18NFoldedProduct(a ^ seed, b ^ (seed * factor));
}

/// @{
/// The hash of a text.
template <typename Unit>
std::uint64_t I18NHashUnits(std::basic_string_view<Unit> text, std::uint64_t seed) {
    constexpr std::size_t word = sizeof(std::uint64_t) / sizeof(Unit);
    auto const load = [](Unit const* from, std::size_t count) {
        std::uint64_t block = 0;
        std::memcpy(&block, from, count * sizeof(Unit));
        return block;
    };
    std::uint64_t hash = text.size() * 0xA076'1D64'78BD'642F;
    Unit const* at = text.data();
    std::size_t left = text.size();
    for (; left > 2 * word; left -= 2 * word, at += 2 * word) {
        hash = I18NMixHash(hash ^ load(at, word), load(at + word, word), seed);
    }
    if (left >= word) { // the two words may overlap
        return I18NMixHash(hash ^ load(at, word), load(at + left - word, word), seed);
    }
    constexpr std::size_t half = word / 2;
    if (left >= half) {
        return I18NMixHash(hash ^ load(at, half), load(at + left - half, half), seed);
    }
    return I18NMixHash(hash, left == 0 ? 0 : load(at, left), seed);
}
inline std::uint64_t I18NHashText(std::u16string_view text, std::uint64_t seed) {
    return I18NHashUnits(text, seed);
}
inline std::uint64_t I18NHashText(std::string_view utf8, std::uint64_t seed) {
    return I18NHashUnits(utf8, seed);
}
/// @}

/// What a standard container of `std::string` or `std::u16string` takes as its hash, with
/// `std::equal_to<>` beside it: it is then asked without a copy of the text.
struct I18NTextHasher {
    /// Lets a container be asked with a view.
    using is_transparent = void;

    /// @{
    /// The hash with the seed of the process.
    std::size_t operator()(std::u16string_view text) const noexcept {
        return static_cast<std::size_t>(I18NHashText(text, I18NHashSeed()));
    }
    std::size_t operator()(std::string_view utf8) const noexcept {
        return static_cast<std::size_t>(I18NHashText(utf8, I18NHashSeed()));
    }
    /// @}
};
