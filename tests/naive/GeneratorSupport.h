#pragma once

#include "tests/naive/PlainModel.h"

#include <cstdint>
#include <random>
#include <span>

namespace naive {

/// The one source of chance of a generated case.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_engine(seed) {}
    /// Takes each choice from the next byte while there is one, so that whoever
    /// chooses the bytes chooses the case.
    explicit Random(std::span<std::uint8_t const> choices) : m_choices(choices) {}

    /// 0 to `count` - 1.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(draw() % count); }
    int between(int low, int high) {
        return low + static_cast<int>(below(static_cast<std::size_t>(high - low + 1)));
    }
    bool chance(int percent) { return between(1, 100) <= percent; }

    template <typename T> const T& pick(std::vector<T> const& from) {
        return from[below(from.size())];
    }

    /// The index of one of the weights, each as likely as it is heavy.
    std::size_t weighted(std::vector<int> const& weights);

private:
    std::uint64_t draw() {
        if (m_choices.empty()) {
            return m_engine();
        }
        std::uint64_t const choice = m_choices.front();
        m_choices = m_choices.subspan(1);
        return choice;
    }

    std::mt19937_64 m_engine;
    std::span<std::uint8_t const> m_choices;
};

/// An XML attribute with a blank before it.
std::string attribute(std::string const& name, std::string const& value);

/// "[a].[b]", with "]" doubled inside a name.
Text quotedPath(Texts const& names);

/// Every element of the model but its root, in document order.
Handles allObjects(PlainModel const& model);

} // namespace naive
