#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vex {

/// A set of the objects of a draft, by their numbers.
class ObjectSet {
public:
    explicit ObjectSet(std::size_t most) : m_words((most + bitsOfAWord - 1) / bitsOfAWord) {}

    void add(std::size_t object) {
        m_words[object / bitsOfAWord] |= std::uint64_t{1} << (object % bitsOfAWord);
    }
    bool has(std::size_t object) const {
        return ((m_words[object / bitsOfAWord] >> (object % bitsOfAWord)) & 1U) != 0;
    }
    void addAll(ObjectSet const& other) {
        for (std::size_t word = 0; word < m_words.size(); ++word) {
            m_words[word] |= other.m_words[word];
        }
    }
    bool isEmpty() const {
        for (std::uint64_t const word : m_words) {
            if (word != 0) {
                return false;
            }
        }
        return true;
    }
    friend bool operator==(ObjectSet const&, ObjectSet const&) = default;

    std::vector<std::size_t> objects() const {
        std::vector<std::size_t> found;
        for (std::size_t object = 0; object < m_words.size() * bitsOfAWord; ++object) {
            if (has(object)) {
                found.push_back(object);
            }
        }
        return found;
    }

private:
    static constexpr std::size_t bitsOfAWord = 64;

    std::vector<std::uint64_t> m_words;
};

} // namespace vex
