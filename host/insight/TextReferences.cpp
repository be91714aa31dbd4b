#include "host/insight/TextReferences.h"

#include "I18NStringIterator.h"
#include "host/store/image/ReferenceText.h"

#include <algorithm>

namespace vex {

namespace {

/// Where the run of bracketed names that begins at `start` ends: behind its
/// last "]". `start` itself when there is no whole name.
int endOfReference(I18NString const& text, int start) {
    int end = start;
    int at = start;
    while (at < text.length() && text[at] == u'[') {
        do {
            at = text.find(u']', at + 1) + 1;
        } while (at > 0 && at < text.length() && text[at] == u']'); // a doubled one is in the name
        if (at <= 0) {
            return end;
        }
        end = at;
        auto const skipBlanks = [&] {
            while (at < text.length() && I18NCodePointIsWhitespace(text[at])) {
                ++at;
            }
        };
        skipBlanks();
        if (at == text.length() || text[at] != u'.') {
            return end;
        }
        ++at;
        skipBlanks();
    }
    return end;
}

bool isWordUnit(char16_t unit) {
    bool const isLetter = (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
    return isLetter || (unit >= u'0' && unit <= u'9') || unit == u'_' || unit >= 0x80;
}

/// The literals of a text, in quotes that are doubled inside. What opens and does not close is
/// an apostrophe.
class Literals {
public:
    explicit Literals(I18NString const& text) : m_text(text) {
        for (int at = 0; at < text.length();) {
            char16_t const unit = text[at];
            bool const opens =
                unit == u'"' || (unit == u'\'' && (at == 0 || !isWordUnit(text[at - 1])));
            int const end = opens ? endOf(at) : -1;
            if (end > 0) {
                m_literals.push_back({at, end});
            }
            at = end > 0 ? end : at + 1;
        }
    }

    bool holds(int at) const {
        auto const after =
            std::upper_bound(m_literals.begin(), m_literals.end(), at,
                             [](int place, Literal const& each) { return place < each.start; });
        return after != m_literals.begin() && at < std::prev(after)->end;
    }

    /// What stands in the single quotes that close right before `at`; "" when none do.
    std::u16string quotedBefore(int at) const {
        auto const found =
            std::lower_bound(m_literals.begin(), m_literals.end(), at,
                             [](Literal const& each, int place) { return each.end < place; });
        if (found == m_literals.end() || found->end != at || m_text[found->start] != u'\'') {
            return {};
        }
        std::u16string name;
        for (int place = found->start + 1; place < found->end - 1; ++place) {
            name += m_text[place];
            place += m_text[place] == u'\'' ? 1 : 0; // doubled
        }
        return name;
    }

private:
    struct Literal {
        int start;
        int end; // behind its closing quote
    };

    int endOf(int start) const {
        char16_t const quote = m_text[start];
        for (int at = m_text.find(quote, start + 1); at >= 0; at = m_text.find(quote, at + 2)) {
            if (at + 1 == m_text.length() || m_text[at + 1] != quote) {
                return at + 1;
            }
        }
        return -1;
    }

    I18NString const& m_text;
    std::vector<Literal> m_literals;
};

std::u16string wordBefore(I18NString const& text, int at) {
    int start = at;
    while (start > 0 && isWordUnit(text[start - 1])) {
        --start;
    }
    std::u16string word;
    for (int place = start; place < at; ++place) {
        word += text[place];
    }
    return word;
}

} // namespace

std::vector<std::u16string> TextReference::allNames() const {
    std::vector<std::u16string> all;
    if (!before.empty()) {
        all.push_back(before);
    }
    all.insert(all.end(), names.begin(), names.end());
    return all;
}

std::vector<TextReference> referencesIn(I18NString const& text) {
    std::vector<TextReference> found;
    int at = text.find(u'[');
    if (at < 0) {
        return found; // as most texts
    }
    Literals const literals(text);
    while (at >= 0) {
        int const end = endOfReference(text, at);
        TextReference reference;
        if (end > at && splitReference(text.substring(at, end - at), reference.names)) {
            reference.isQuoted = literals.holds(at);
            reference.before = literals.quotedBefore(at);
            if (reference.before.empty()) {
                reference.before = wordBefore(text, at);
            }
            reference.isMemberKey = at > 0 && text[at - 1] == u'&';
            found.push_back(std::move(reference));
        }
        at = text.find(u'[', std::max(end, at + 1));
    }
    return found;
}

} // namespace vex
