#pragma once

#include "I18NHash.h"
#include "host/store/image/StoreData.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vex {

/// Of the number of a text or a name, or of two: a model chooses where its texts lie.
struct TextNumberHash {
    std::size_t operator()(std::uint64_t number) const noexcept {
        return static_cast<std::size_t>(I18NMixHash(number, 0, I18NHashSeed()));
    }
};

/// A set of the texts of a model, by their numbers; in it is nothing that the model does not say.
class TextSet {
public:
    /// Of texts with numbers below `end`.
    void clear(std::size_t end) { m_isIn.assign(end, false); }

    void insert(TextRef text) {
        if (text < m_isIn.size()) {
            m_isIn[text] = true;
        }
    }
    bool contains(TextRef text) const { return text < m_isIn.size() && m_isIn[text]; }
    bool isEmpty() const { return m_isIn.empty(); }

private:
    std::vector<bool> m_isIn;
};

} // namespace vex
