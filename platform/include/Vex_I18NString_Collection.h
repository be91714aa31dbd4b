#pragma once

#include "I18NString.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

/// An ordered list of distinct strings. An index past the end gives "".
class Vex_I18NString_Collection {
public:
    /// Adds `text` at the end; a text that is already there is dropped.
    void Add(I18NString const& text) {
        if (isNew(text)) {
            m_texts.push_back(text);
        }
    }
    /// How many distinct strings.
    std::size_t Size() const { return m_texts.size(); }
    /// The string at `index`, "" past the end. Valid until one is added.
    I18NString const& operator[](std::size_t index) const {
        return index < m_texts.size() ? m_texts[index] : m_empty;
    }

private:
    static constexpr std::size_t Few = 16; // looking through these is faster than searching

    bool isNew(I18NString const& text) {
        if (m_texts.size() < Few) {
            return std::find(m_texts.begin(), m_texts.end(), text) == m_texts.end();
        }
        if (m_known.empty()) {
            m_known.insert(m_texts.begin(), m_texts.end());
        }
        return m_known.insert(text).second;
    }

    std::vector<I18NString> m_texts;
    std::unordered_set<I18NString> m_known; // all of them once they are more than a few
    I18NString m_empty;
};
