#pragma once

#include "platform/src/document/KRLIDOM_XmlText.h"

#include <cstddef>
#include <vector>

#include <xercesc/dom/DOMNode.hpp>

/// Where the lines of a written document break and how far they are indented; does nothing
/// unless it is to be read by people. A blank text of the document that has a line feed stands
/// for the break, and its blanks for as much of the indentation.
class KRLIDOM_Layout {
public:
    KRLIDOM_Layout(KRLIDOM_XmlText& out, bool pretty) : m_out(out), m_pretty(pretty) {}

    /// @{
    /// Before the node is written. `children`: the element has some, and is to be closed.
    void openElement(bool children);
    void text(char16_t const* text);
    void comment(xercesc::DOMNode const* node);
    void instruction();
    /// @}
    /// Before the end tag of the element that was opened last.
    void closeElement();
    void breakLine();

private:
    enum class Elements { NotLookedFor, None, Some };

    struct Open {
        std::size_t line;
        Elements below = Elements::NotLookedFor;
    };

    void startTag();
    void indent();
    bool isAmongElements(xercesc::DOMNode const* node);

    KRLIDOM_XmlText& m_out;
    bool m_pretty;
    bool m_lineIsBroken = false; // by a text of the document
    std::size_t m_blanks = 0;    // of that text from its last line feed on
    std::size_t m_line = 0;      // counts the breaks that were made here
    std::vector<Open> m_open{};
};
