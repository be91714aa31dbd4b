#include "host/store/image/TextReferences.h"

#include "I18NStringIterator.h"

#include <algorithm>

namespace vex {

namespace {

bool isWordUnit(char16_t unit) {
    bool const isLetter = (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
    return isLetter || (unit >= u'0' && unit <= u'9') || unit == u'_' || unit >= 0x80;
}

/// Appends what stands between two marks, each doubled one once.
void appendOnce(std::u16string& to, std::u16string_view text, char16_t mark) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        to += text[at];
        at += text[at] == mark ? 1 : 0;
    }
}

} // namespace

std::size_t DoubledMarks::endOfRun(std::size_t start) const {
    return std::min(m_text.find_first_not_of(m_mark, start), m_text.size());
}

std::size_t DoubledMarks::closeOf(std::size_t from) {
    std::size_t at = from;
    if (at < m_text.size() && m_text[at] == m_mark) { // in a run of marks, or before one
        std::size_t const end = endOfRun(at);
        if ((end - at) % 2 != 0) {
            return end;
        }
        at = end;
    }
    bool const isKnown = m_from <= at && at <= m_start;
    if (isKnown) {
        return m_end;
    }
    m_from = at;
    do {
        m_start = m_text.find(m_mark, at);
        m_end = m_start == npos ? npos : endOfRun(m_start);
        at = m_end;
    } while (m_start != npos && (m_end - m_start) % 2 == 0);
    return m_end;
}

TextReferences::TextReferences(I18NString const& text)
    : m_text(text.view()), m_at(m_text.find(u'[')), m_brackets(m_text, u']'),
      m_singleQuotes(m_text, u'\''), m_doubleQuotes(m_text, u'"') {}

TextReference const* TextReferences::next() {
    while (m_at != npos) {
        std::size_t const start = m_at;
        std::size_t const end = endOfReference(start);
        m_at = m_text.find(u'[', std::max(end, start + 1));
        if (end != start) {
            readNames(start, end);
            readWordBefore(start);
            return &m_reference;
        }
    }
    return nullptr;
}

std::size_t TextReferences::behindBlanks(std::size_t at) const {
    while (at < m_text.size() && I18NCodePointIsWhitespace(m_text[at])) {
        ++at;
    }
    return at;
}

/// Where the run of bracketed names that begins at `start` ends: behind its last "]".
/// `start` itself when there is no whole name.
std::size_t TextReferences::endOfReference(std::size_t start) {
    std::size_t end = start;
    for (std::size_t at = start; at < m_text.size() && m_text[at] == u'[';) {
        std::size_t const close = m_brackets.closeOf(at + 1);
        if (close == npos) {
            return end;
        }
        end = close;
        at = behindBlanks(end);
        if (at == m_text.size() || m_text[at] != u'.') {
            return end;
        }
        at = behindBlanks(at + 1);
    }
    return end;
}

void TextReferences::readNames(std::size_t start, std::size_t end) {
    m_reference.m_names.clear();
    m_reference.m_held.clear();
    m_reference.m_held.reserve(end - start); // no name moves
    for (std::size_t at = start; at < end; at = m_text.find(u'[', at)) {
        std::size_t const close = m_brackets.closeOf(at + 1);
        std::size_t const before = m_reference.m_held.size();
        appendOnce(m_reference.m_held, m_text.substr(at + 1, close - at - 2), u']');
        m_reference.m_names.push_back(std::u16string_view(m_reference.m_held).substr(before));
        at = close;
    }
    m_reference.m_isMemberKey = start > 0 && m_text[start - 1] == u'&';
}

void TextReferences::readWordBefore(std::size_t start) {
    readLiteralsTo(start);
    m_reference.m_isQuoted = m_literal < start && start < m_literalEnd;
    m_reference.m_before.clear();
    bool const isBehindQuotes =
        m_literalEnd == start && m_literalEnd != 0 && m_text[m_literal] == u'\'';
    if (isBehindQuotes) {
        appendOnce(m_reference.m_before, m_text.substr(m_literal + 1, m_literalEnd - m_literal - 2),
                   u'\'');
    }
    if (m_reference.m_before.empty()) {
        std::size_t first = start;
        while (first > 0 && isWordUnit(m_text[first - 1])) {
            --first;
        }
        m_reference.m_before = m_text.substr(first, start - first);
    }
    m_reference.m_all.clear();
    if (!m_reference.m_before.empty()) {
        m_reference.m_all.push_back(m_reference.m_before);
        m_reference.m_all.insert(m_reference.m_all.end(), m_reference.m_names.begin(),
                                 m_reference.m_names.end());
    }
}

/// Literals stand in quotes that are doubled inside. What opens and does not close is an
/// apostrophe.
void TextReferences::readLiteralsTo(std::size_t at) {
    while (m_literalEnd < at && m_looked < at) {
        char16_t const unit = m_text[m_looked];
        bool const isApostrophe = m_looked > 0 && isWordUnit(m_text[m_looked - 1]);
        std::size_t const end = unit == u'"' ? m_doubleQuotes.closeOf(m_looked + 1)
                                : unit == u'\'' && !isApostrophe
                                    ? m_singleQuotes.closeOf(m_looked + 1)
                                    : npos;
        if (end != npos) {
            m_literal = m_looked;
            m_literalEnd = end;
        }
        m_looked = end != npos ? end : m_looked + 1;
    }
}

} // namespace vex
