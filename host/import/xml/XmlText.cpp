#include "host/import/xml/XmlText.h"

#include <algorithm>
#include <utility>

namespace vex {

namespace {

struct Escape {
    char unit;
    bool inAttributesOnly;
    char const* written;
};

// Line ends and tabs in attributes, and carriage returns anywhere, are read as something else
// when they are written as they are.
constexpr Escape escapes[] = {
    {'&', false, "&amp;"}, {'<', false, "&lt;"}, {'>', false, "&gt;"},   {'"', true, "&quot;"},
    {'\n', true, "&#10;"}, {'\t', true, "&#9;"}, {'\r', false, "&#13;"},
};

} // namespace

XmlText::XmlText() : m_written("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") {}

void XmlText::endStartTag() {
    if (std::exchange(m_inStartTag, false)) {
        m_written += ">";
        m_written += '\n';
    }
}

void XmlText::indent() {
    constexpr std::size_t mostLevels = 10; // a document may be nested hundreds deep
    m_written.append(2 * std::min(m_open.size(), mostLevels), ' ');
}

void XmlText::open(std::string_view tag) {
    endStartTag();
    if (m_hasText) {
        m_written += '\n'; // white space at the ends of a text does not count
    }
    indent();
    m_written.append("<").append(tag);
    m_open.emplace_back(tag);
    m_inStartTag = true;
    m_hasText = false;
}

void XmlText::attribute(std::string_view name, std::string_view value) {
    m_written.append(" ").append(name).append("=\"");
    write(value, true);
    m_written += '"';
}

void XmlText::text(std::string_view text) {
    if (!text.empty()) {
        m_written += '>';
        m_inStartTag = false;
        m_hasText = true;
        write(text, false);
    }
}

void XmlText::close() {
    std::string const tag = std::move(m_open.back());
    m_open.pop_back();
    if (std::exchange(m_inStartTag, false)) {
        m_written += "/>\n";
    } else {
        if (!m_hasText) {
            indent();
        }
        m_written.append("</").append(tag).append(">\n");
    }
    m_hasText = false;
}

void XmlText::element(std::string_view tag, std::string_view content) {
    open(tag);
    text(content);
    close();
}

void XmlText::write(std::string_view text, bool inAttribute) {
    for (char const unit : text) {
        char const* written = nullptr;
        for (Escape const& escape : escapes) {
            if (escape.unit == unit && (inAttribute || !escape.inAttributesOnly)) {
                written = escape.written;
            }
        }
        if (written == nullptr) {
            m_written += unit;
        } else {
            m_written += written;
        }
    }
}

} // namespace vex
