#pragma once

#include "I18NString.h"

#include <algorithm>
#include <vector>

/// An ordered list of distinct strings. An index past the end gives "".
class Vex_I18NString_Collection {
public:
    /// Adds `text` at the end; a text that is already there is dropped.
    void Add(I18NString const& text) {
        if (std::find(m_texts.begin(), m_texts.end(), text) == m_texts.end()) {
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
    std::vector<I18NString> m_texts;
    I18NString m_empty;
};
