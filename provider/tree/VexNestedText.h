#pragma once

#include "I18NString.h"
#include "provider/request/VexBracketedName.h"

#include <cstddef>
#include <string>

/// One text that grows by a bracketed name from each container to its members.
/// A place in the tree keeps the part that is its own text; members add theirs
/// behind it, and the next sibling's takes the place of the last one's.
class VexNestedText {
public:
    struct Part {
        std::size_t begin = 0;
        std::size_t end = 0;
        bool empty() const { return begin == end; }
    };

    /// A text of its own behind `outer`, which stays.
    Part put(Part outer, std::u16string_view text) {
        m_text.resize(outer.end);
        m_text += text;
        return {outer.end, m_text.size()};
    }

    /// The text of `outer` with the bracketed name behind it, after a "." if
    /// `dotted`.
    Part extend(Part outer, I18NString const& name, bool dotted) {
        m_text.resize(outer.end);
        AppendBracketedName(m_text, name.view(), dotted);
        return {outer.begin, m_text.size()};
    }

    /// Makes `target` show the text, until this text changes. What was behind
    /// it is gone.
    void show(Part part, I18NString& target) {
        m_text.resize(part.end);
        target.setAlias(m_text.data() + part.begin, static_cast<int>(part.end - part.begin));
    }

    std::u16string_view view(Part part) const {
        return std::u16string_view(m_text).substr(part.begin, part.end - part.begin);
    }

private:
    std::u16string m_text;
};
