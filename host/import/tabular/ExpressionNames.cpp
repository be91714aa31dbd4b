#include "host/import/tabular/ExpressionNames.h"

#include "I18NString.h"
#include "I18NStringIterator.h"
#include "host/import/draft/PlainText.h"

#include <algorithm>

namespace vex {

namespace {

using Kind = ExpressionName::Kind;
using Text = std::u16string_view;

bool isSpace(char16_t unit) {
    return I18NCodePointIsWhitespace(unit);
}

bool beginsWord(char16_t unit) {
    constexpr char16_t firstBeyondAscii = 0x80;
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_' ||
           (unit >= firstBeyondAscii && !isSpace(unit));
}

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

class ExpressionScan {
public:
    explicit ExpressionScan(Text text) : m_text(text) {}

    std::vector<ExpressionName> scan() && {
        while (m_at < m_text.size()) {
            char16_t const unit = m_text[m_at];
            if (unit == u'"') {
                std::size_t const start = m_at;
                quoted(u'"');
                scanInside(m_text.substr(start, m_at - start), false);
            } else if (startsWith(u"/*")) {
                skipComment(u"*/");
            } else if (startsWith(u"//") || startsWith(u"--")) {
                skipComment(u"\n");
            } else if (unit == u'\'') {
                tableName(quoted(u'\''));
            } else if (unit == u'[') {
                add(Kind::Member, quoted(u']'));
            } else if (beginsWord(unit)) {
                word();
            } else {
                ++m_at;
                while (isDigit(unit) && m_at < m_text.size() &&
                       (isDigit(m_text[m_at]) || beginsWord(m_text[m_at]))) {
                    ++m_at; // 1e5 is one number
                }
            }
        }
        return std::move(m_names);
    }

private:
    bool startsWith(Text mark) const { return m_text.substr(m_at).starts_with(mark); }

    void add(Kind kind, Text name, Text table = {}) {
        m_names.push_back({kind, foldedCase(table), foldedCase(name)});
    }

    /// What stands up to the closing mark, which is doubled inside; to the end without one.
    std::u16string quoted(char16_t closing) {
        std::u16string content;
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (m_text[m_at] == closing) {
                if (m_at + 1 >= m_text.size() || m_text[m_at + 1] != closing) {
                    ++m_at;
                    break;
                }
                ++m_at;
            }
            content += m_text[m_at];
        }
        return content;
    }

    void word() {
        std::size_t const start = m_at;
        while (m_at < m_text.size() &&
               (beginsWord(m_text[m_at]) || isDigit(m_text[m_at]) || m_text[m_at] == u'.')) {
            ++m_at;
        }
        Text const name = m_text.substr(start, m_at - start);
        std::size_t next = m_at;
        while (next < m_text.size() && isSpace(m_text[next])) {
            ++next;
        }
        if (next < m_text.size() && m_text[next] == u'(') {
            add(Kind::Function, name);
        } else {
            tableName(std::u16string(name));
        }
    }

    /// A table by itself, or with a column behind it.
    void tableName(std::u16string const& table) {
        std::size_t next = m_at;
        while (next < m_text.size() && isSpace(m_text[next])) {
            ++next;
        }
        add(Kind::Table, table);
        if (next < m_text.size() && m_text[next] == u'[') {
            bool const isApart = next != m_at; // RETURN [Amount] has no table
            m_at = next;
            std::u16string const name = quoted(u']');
            add(Kind::OfTable, name, table);
            if (isApart) {
                add(Kind::Member, name);
            }
        }
    }

    void skipComment(Text end) {
        std::size_t const found = m_text.find(end, m_at + 2);
        std::size_t const behind = found == Text::npos ? m_text.size() : found + end.size();
        scanInside(m_text.substr(m_at, behind - m_at), true);
        m_at = behind;
    }

    /// In a comment or a literal neither quotes nor brackets need pair: what stands between any
    /// two quotes may be a table, and so may a word of a comment; brackets inside brackets are
    /// part of a name, or the name itself. Each character is looked at a few times at most.
    void scanInside(Text text, bool isComment) {
        std::size_t quote = Text::npos;
        std::size_t outer = Text::npos; // the bracket that the name around here began with
        std::size_t behindOuter = 0;
        std::size_t inner = Text::npos; // the last bracket
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (text[at] == u'\'') {
                if (quote != Text::npos) {
                    add(Kind::Table, text.substr(quote + 1, at - quote - 1));
                }
                quote = at;
            } else if (text[at] == u'[') {
                if (at >= behindOuter) {
                    ExpressionScan name(text.substr(at));
                    add(Kind::Member, name.quoted(u']'));
                    outer = at;
                    behindOuter = at + name.m_at;
                }
                inner = at;
            } else if (text[at] == u']' && inner != Text::npos) {
                if (inner != outer || at + 1 != behindOuter) {
                    add(Kind::Member, text.substr(inner + 1, at - inner - 1));
                }
                inner = Text::npos;
            } else if (isComment && beginsWord(text[at]) &&
                       (at == 0 || !beginsWord(text[at - 1]))) {
                std::size_t end = at;
                while (end < text.size() && (beginsWord(text[end]) || isDigit(text[end]))) {
                    ++end;
                }
                add(Kind::Table, text.substr(at, end - at));
            }
        }
    }

    Text m_text;
    std::size_t m_at = 0;
    std::vector<ExpressionName> m_names;
};

} // namespace

std::vector<ExpressionName> namesInExpression(std::string_view expression) {
    I18NString const text = I18NString::fromUtf8(expression);
    return ExpressionScan(text.view()).scan();
}

} // namespace vex
