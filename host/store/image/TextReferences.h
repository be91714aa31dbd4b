#pragma once

#include "I18NString.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// Bracketed names in a text that belong together: [Sales].[Orders].[Total], with the word
/// or quoted name right before them, as in Orders[Total] and 'Orders'[Total].
class TextReference {
public:
    TextReference() = default;
    TextReference(TextReference const&) = delete;
    TextReference& operator=(TextReference const&) = delete;

    using Names = std::vector<std::u16string_view>;

    /// The names in brackets.
    Names const& names() const { return m_names; }
    /// The same behind the word before them, where there is one.
    Names const& allNames() const { return m_all.empty() ? m_names : m_all; }
    /// The word; "" without one.
    std::u16string const& before() const { return m_before; }
    /// Stands in a literal, such as 'as in [Sales]'.
    bool isQuoted() const { return m_isQuoted; }
    /// &[2004], a value and no name.
    bool isMemberKey() const { return m_isMemberKey; }

private:
    friend class TextReferences;

    std::u16string m_before;
    std::u16string m_held; // what the names are part of
    Names m_names;
    Names m_all; // only with a word
    bool m_isQuoted = false;
    bool m_isMemberKey = false;
};

/// Finds where what is quoted ends, when a mark inside it is doubled. Asked about one place
/// after the other it looks at each character of the text only a few times.
class DoubledMarks {
public:
    DoubledMarks(std::u16string_view text, char16_t mark) : m_text(text), m_mark(mark) {}

    /// Behind the first mark at or after `from` that is not doubled; `npos` without one.
    std::size_t closeOf(std::size_t from);

private:
    std::size_t endOfRun(std::size_t start) const;

    static constexpr std::size_t npos = std::u16string_view::npos;

    std::u16string_view m_text;
    char16_t m_mark;
    // From `m_from` on up to `m_start` no run of marks has an odd one but that at `m_start`.
    std::size_t m_from = npos;
    std::size_t m_start = 0;
    std::size_t m_end = 0;
};

/// Gives the references in a text one at a time, in its order.
class TextReferences {
public:
    /// The text stays as it is.
    explicit TextReferences(I18NString const& text);

    /// The next one; null behind the last. Valid until the next call.
    TextReference const* next();

private:
    std::size_t endOfReference(std::size_t start);
    std::size_t behindBlanks(std::size_t at) const;
    void readNames(std::size_t start, std::size_t end);
    void readWordBefore(std::size_t start);
    void readLiteralsTo(std::size_t at);

    static constexpr std::size_t npos = std::u16string_view::npos;

    std::u16string_view m_text;
    std::size_t m_at; // of the next bracket
    DoubledMarks m_brackets;
    DoubledMarks m_singleQuotes;
    DoubledMarks m_doubleQuotes;
    // The last literal that begins before the reference at hand, and how far was looked.
    std::size_t m_literal = 0;
    std::size_t m_literalEnd = 0;
    std::size_t m_looked = 0;
    TextReference m_reference;
};

} // namespace vex
