#pragma once

#include "tests/naive/GeneratorSupport.h"

#include <set>

namespace naive {

/// What a model document may hold and no model needs, drawn at random.
class OddContent {
public:
    explicit OddContent(Random& random) : m_random(random) {}

    /// A class of elements, those among them that no product has.
    std::string cls();
    /// Attributes that objects have operations for, or that are called like a class.
    std::vector<std::pair<std::string, std::string>> attributes();
    /// Text and properties, some in others, as they stand between two elements.
    /// `taken` holds the localised properties that the element has.
    std::string between(std::set<std::string>& taken);
    /// A localised property in `taken`.
    static std::string key(std::string const& name, std::string const& locale);

private:
    std::string words();
    std::string property(int depth, std::set<std::string>& taken);

    Random& m_random;
};

} // namespace naive
