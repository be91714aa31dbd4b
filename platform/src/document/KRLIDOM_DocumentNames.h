#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_set>

/// The names of the elements and attributes that are put into a document. The XML library
/// finds each in a table of fixed size with a hash that everybody knows, and goes through
/// the names in its place: whoever chooses names could put all of them there.
class KRLIDOM_DocumentNames {
public:
    static constexpr std::size_t Most = 50'000;
    /// The most names in one place of the table. As many names as are allowed, which nobody
    /// chose for that, have fewer than 270 in any place.
    static constexpr std::size_t MostInOnePlace = 320;

    /// Adds a name, which ends with a zero and may have been added before. Raises
    /// `KRLLimitException` when there are too many others, or too many in its place.
    void add(char16_t const* name, std::size_t length);

private:
    static constexpr std::size_t places = 257; // of the library's table
    std::array<std::uint16_t, places> m_inPlace{};
    std::unordered_set<std::uint64_t> m_known; // by a hash that nobody knows
    // The last one of each place: an answer has few names, each of them often. No place
    // has at first what could come into it.
    std::array<std::uint64_t, 32> m_recent{1};
};
