#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace vex {

/// A number that no document can foresee, the same for the life of the process:
/// without it a document could be made of texts that all hash alike.
std::uint64_t hashSeed();

/// The product of two numbers, its upper half laid over its lower one: from
/// products of their halves, for machines that have no wider ones.
constexpr std::uint64_t foldedProductOfHalves(std::uint64_t a, std::uint64_t b) {
    constexpr unsigned half = 32;
    constexpr std::uint64_t low = 0xFFFF'FFFF;
    std::uint64_t const inner = (a & low) * (b & low);
    std::uint64_t const mixed = (a >> half) * (b & low) + (inner >> half);
    std::uint64_t const other = (a & low) * (b >> half) + (mixed & low);
    std::uint64_t const upper = (a >> half) * (b >> half) + (mixed >> half) + (other >> half);
    return upper ^ ((other << half) | (inner & low));
}

constexpr std::uint64_t foldedProduct(std::uint64_t a, std::uint64_t b) {
#ifdef __SIZEOF_INT128__
    __extension__ using Wide = unsigned __int128;
    constexpr unsigned wordBits = 64;
    Wide const product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> wordBits);
#else
    return foldedProductOfHalves(a, b);
#endif
}

/// Mixes two numbers into one; every bit of the result depends on both.
constexpr std::uint64_t mixHash(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t evenBits = 0xA076'1D64'78BD'642F; // half of its bits are set
    constexpr std::uint64_t oddBits = 0xE703'7ED1'A0B4'28DB;
    return foldedProduct(a ^ evenBits, b ^ oddBits);
}

inline std::uint64_t hashText(std::u16string_view text, std::uint64_t seed) {
    constexpr std::size_t word = sizeof(std::uint64_t) / sizeof(char16_t);
    auto const load = [](char16_t const* from, std::size_t count) {
        std::uint64_t block = 0;
        std::memcpy(&block, from, count * sizeof(char16_t));
        return block;
    };
    std::uint64_t hash = seed ^ text.size();
    char16_t const* at = text.data();
    std::size_t left = text.size();
    for (; left > 2 * word; left -= 2 * word, at += 2 * word) {
        hash = mixHash(hash ^ load(at, word), load(at + word, word));
    }
    if (left >= word) { // the two words may overlap
        return mixHash(hash ^ load(at, word), load(at + left - word, word));
    }
    constexpr std::size_t half = word / 2;
    if (left >= half) {
        return mixHash(hash ^ load(at, half), load(at + left - half, half));
    }
    return mixHash(hash, left == 0 ? 0 : *at);
}

} // namespace vex
