#include "tests/naive/ResponseDocument.h"

#include "tests/naive/XmlTree.h"

#include <utility>

namespace naive {

ResponseElement::ResponseElement(Text name) : tag(std::move(name)) {}

std::string ResponseElement::serialised() const {
    std::string output;
    appendTo(output);
    return output;
}

void ResponseElement::appendTo(std::string& output) const {
    output += "<" + toUtf8(tag);
    for (auto const& [name, value] : attributes) {
        output += " " + toUtf8(name) + "=\"" + escapedAttribute(value) + "\"";
    }
    if (text.empty() && children.empty()) {
        output += "/>";
        return;
    }
    output += ">" + escapedContent(text);
    for (auto const& child : children) {
        child->appendTo(output);
    }
    output += "</" + toUtf8(tag) + ">";
}

ResponseDocument::ResponseDocument(std::size_t elementLimit) : m_elementLimit(elementLimit) {
    m_response = createElement(u"Response");
    m_response->children.push_back(createElement(u"Result"));
}

std::unique_ptr<ResponseElement> ResponseDocument::createElement(Text const& tag) {
    if (m_elements >= m_elementLimit) {
        throw ElementLimitReached{m_elementLimit};
    }
    ++m_elements;
    return std::make_unique<ResponseElement>(tag);
}

} // namespace naive
