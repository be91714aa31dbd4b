#include "host/catalogue/Selector.h"

#include "host/store/image/ReferenceText.h"
#include "host/store/image/ShortText.h"

#include <algorithm>

namespace vex {

namespace {

constexpr std::u16string_view blanks = u" \t\r\n";

/// Goes through a selector from left to right.
class SelectorReader {
public:
    SelectorReader(std::u16string_view text, Selector& selector)
        : m_rest(text), m_selector(selector) {}

    std::string read() {
        skipBlanks();
        if (m_rest.empty()) {
            return "the selector is empty; write a reference such as [Sales].[Orders], or ** for "
                   "everything";
        }
        readClass();
        for (auto const part : {&SelectorReader::readPlace, &SelectorReader::readTests}) {
            std::string complaint = (this->*part)();
            if (!complaint.empty()) {
                return complaint;
            }
        }
        return {};
    }

private:
    void skipBlanks() {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(blanks), m_rest.size()));
    }

    bool take(std::u16string_view text) {
        bool const isThere = m_rest.starts_with(text);
        m_rest.remove_prefix(isThere ? text.size() : 0);
        return isThere;
    }

    std::string shown() const { return '"' + shortened(m_rest) + '"'; }

    /// "class:" or "class@", which stand first.
    void readClass() {
        std::size_t const end = m_rest.find_first_of(u":@[]#*/\"= ");
        if (end == 0 || end == m_rest.npos || (m_rest[end] != u':' && m_rest[end] != u'@')) {
            return;
        }
        m_selector.className = m_rest.substr(0, end);
        m_rest.remove_prefix(m_rest[end] == u':' ? end + 1 : end);
        skipBlanks();
    }

    std::string readPlace() {
        bool const hasClass = !m_selector.className.empty();
        if (take(u"**") || (hasClass && (m_rest.empty() || m_rest.front() == u'@'))) {
            m_selector.reach = Selector::Reach::Everywhere;
            return {};
        }
        if (m_rest.starts_with(u'[')) {
            if (!readReference()) {
                return "the reference " + shown() +
                       " does not end; write names in brackets with "
                       "dots between them, such as [Sales].[Orders], and a \"]\" in a name twice";
            }
        } else if (take(u"#")) {
            if (!readText(u"@/", m_selector.id) || m_selector.id.empty()) {
                return "no id stands behind \"#\"; write one such as #q1, in quotes if it holds "
                       "\"@\" or \"/\": #\"a/b\"";
            }
        } else {
            return "nothing is known to be meant by " + shown() +
                   "; write a reference in brackets, #id, ** or a class with a colon, such as "
                   "querySubject:";
        }
        if (take(u"/**")) {
            m_selector.reach = Selector::Reach::Subtree;
        } else if (take(u"/*")) {
            m_selector.reach = Selector::Reach::Members;
        }
        return {};
    }

    bool readReference() {
        std::size_t at = 0;
        std::size_t end = 0;
        do {
            at = m_rest.find_first_not_of(blanks, at); // of the bracket
            if (at == m_rest.npos || m_rest[at] != u'[') {
                return false;
            }
            for (++at;; at += 2) { // a bracket in a name is doubled
                at = m_rest.find(u']', at);
                if (at == m_rest.npos) {
                    return false;
                }
                if (at + 1 == m_rest.size() || m_rest[at + 1] != u']') {
                    break;
                }
            }
            end = at + 1;
            at = m_rest.find_first_not_of(blanks, end);
        } while (at != m_rest.npos && m_rest[at++] == u'.');
        bool const isRead = splitReference(I18NString(m_rest.substr(0, end)), m_selector.reference);
        m_rest.remove_prefix(end);
        return isRead;
    }

    /// A text in quotes, or up to one of the `ends`. False for quotes that are not closed.
    bool readText(std::u16string_view ends, std::u16string& text) {
        if (!take(u"\"")) {
            std::size_t const end = std::min(m_rest.find_first_of(ends), m_rest.size());
            text = m_rest.substr(0, end);
            while (!text.empty() && blanks.find(text.back()) != blanks.npos) {
                text.pop_back();
            }
            m_rest.remove_prefix(end);
            return true;
        }
        for (;;) {
            std::size_t const end = m_rest.find(u'"');
            if (end == m_rest.npos) {
                return false;
            }
            text += m_rest.substr(0, end);
            m_rest.remove_prefix(end + 1);
            if (!take(u"\"")) {
                return true;
            }
            text += u'"';
        }
    }

    std::string readTests() {
        for (skipBlanks(); !m_rest.empty(); skipBlanks()) {
            if (!take(u"@")) {
                return shown() + " stands behind the end of the selector; only /*, /** and "
                                 "@property=value may";
            }
            Selector::Test test;
            std::size_t const end = m_rest.find(u'=');
            if (end == m_rest.npos || end == 0 || m_rest.substr(0, end).find(u'@') != m_rest.npos) {
                return "\"@\" is followed by a property and its value, such as @usage=fact or "
                       "@tag=pii";
            }
            test.property = m_rest.substr(0, end);
            m_rest.remove_prefix(end + 1);
            if (!readText(u"@", test.value)) {
                return "the quotes behind \"=\" are not closed; write a quote in a value twice";
            }
            if (test.property == u"tag") {
                test.property = u"tags";
                test.isWord = true;
            }
            if (test.value.empty()) {
                return "no value stands behind \"=\"; a property without one is not selected by it";
            }
            m_selector.tests.push_back(std::move(test));
        }
        return {};
    }

    std::u16string_view m_rest;
    Selector& m_selector;
};

} // namespace

std::string Selector::read(I18NString const& text, Selector& selector) {
    return SelectorReader(text.view(), selector).read();
}

std::string selectorOfId(std::string_view id) {
    bool const isPlain =
        id.find_first_of("@/\"") == id.npos && id.find_first_of(" \t\r\n") == id.npos;
    if (isPlain) {
        return '#' + std::string(id);
    }
    std::string quoted = "#\"";
    for (char const each : id) {
        quoted += each;
        if (each == '"') {
            quoted += each;
        }
    }
    return quoted + '"';
}

} // namespace vex
