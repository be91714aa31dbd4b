#include "platform/src/document/KRLIDOM_Layout.h"

#include "platform/src/document/KRLIDOM_Guard.h"

#include <new>
#include <string_view>

namespace {

constexpr std::string_view indentation = "  ";

bool isBlank(std::u16string_view text) {
    return text.find_first_not_of(u" \t\r\n") == std::u16string_view::npos;
}

// Of a document that was not read from a file, lines may end in the other one.
std::size_t lastLineEnd(std::u16string_view text) {
    std::size_t const lineFeed = text.rfind(u'\n');
    return lineFeed == std::u16string_view::npos ? text.rfind(u'\r') : lineFeed;
}

} // namespace

void KRLIDOM_Layout::openElement(bool children) {
    if (!m_pretty) {
        return;
    }
    startTag();
    if (children) {
        try {
            m_open.push_back({m_line});
        } catch (std::bad_alloc const&) {
            KRLIDOM::raiseOutOfMemory(nullptr);
        }
    }
}

void KRLIDOM_Layout::closeElement() {
    if (!m_pretty) {
        return;
    }
    std::size_t const line = m_open.back().line;
    m_open.pop_back();
    if (line != m_line) {
        startTag();
    }
}

void KRLIDOM_Layout::text(char16_t const* text) {
    if (!m_pretty) {
        return;
    }
    std::u16string_view const units(text);
    std::size_t const end = isBlank(units) ? lastLineEnd(units) : std::u16string_view::npos;
    m_lineIsBroken = end != std::u16string_view::npos;
    m_blanks = m_lineIsBroken ? units.size() - end : 0;
}

// A comment between texts stays where it is.
void KRLIDOM_Layout::comment(xercesc::DOMNode const* node) {
    if (m_pretty && (m_open.empty() || isAmongElements(node))) {
        instruction();
    }
}

void KRLIDOM_Layout::instruction() {
    if (m_pretty) {
        breakLine();
        indent();
    }
}

void KRLIDOM_Layout::breakLine() {
    if (m_pretty) {
        ++m_line;
        m_out.breakLine();
    }
}

void KRLIDOM_Layout::startTag() {
    if (!m_lineIsBroken) {
        breakLine();
    }
    m_lineIsBroken = false;
    indent();
}

void KRLIDOM_Layout::indent() {
    std::size_t const there = m_blanks / indentation.size();
    m_blanks = 0;
    for (std::size_t level = there; level < m_open.size(); ++level) {
        m_out.put(indentation);
    }
}

// Looked for once: an element may have any number of comments.
bool KRLIDOM_Layout::isAmongElements(xercesc::DOMNode const* node) {
    Elements& below = m_open.back().below;
    if (below == Elements::NotLookedFor) {
        xercesc::DOMNode const* at = node->getParentNode()->getFirstChild();
        while (at != nullptr && at->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
            at = at->getNextSibling();
        }
        below = at == nullptr ? Elements::None : Elements::Some;
    }
    return below == Elements::Some;
}
