#include "tests/support/TestDocument.h"

#include "KRLIDOM_Attr.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "KRLIDOM_Reader.h"

#include <map>

namespace {

std::string escaped(I18NString const& text) {
    std::string result;
    for (char const c : text.toUtf8()) {
        switch (c) {
        case '<':
            result += "&lt;";
            break;
        case '&':
            result += "&amp;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

void write(KRLIDOM_Node const& node, std::string& text);

void writeChildren(KRLIDOM_Node const& node, std::string& text) {
    for (KRLIDOM_Node child = node.getFirstChild(); !child.isNull();
         child = child.getNextSibling()) {
        write(child, text);
    }
}

void write(KRLIDOM_Node const& node, std::string& text) {
    if (node.getNodeType() == KRLIDOM_Node::TextNode) {
        text += escaped(node.getNodeValue());
        return;
    }
    std::string const tag = node.getNodeName().toUtf8();
    text += "<" + tag;
    std::map<std::string, std::string> sorted;
    KRLIDOM_NamedNodeMap const attributes = node.getAttributes();
    for (std::size_t i = 0; i < attributes.getLength(); ++i) {
        KRLIDOM_Attr const attribute = attributes.item(i);
        sorted[attribute.getName().toUtf8()] = escaped(attribute.getValue());
    }
    for (auto const& [name, value] : sorted) {
        text += " " + name + "=\"" + value + "\"";
    }
    if (!node.hasChildNodes()) {
        text += "/>";
        return;
    }
    text += ">";
    writeChildren(node, text);
    text += "</" + tag + ">";
}

} // namespace

std::string sortedText(KRLIDOM_Node const& node) {
    std::string text;
    write(node, text);
    return text;
}

TestRequest::TestRequest(std::string_view xml)
    : m_document(KRLIDOM_Reader::parse(xml, "test request")), m_node(m_document.document()) {}

TestResponse::TestResponse(KRLIDOM_Limits const& limits)
    : m_document("Response", limits), m_response(m_document.document().getDocumentElement()) {
    m_response.appendChild(m_document.document().createElement("Result"));
}

KRLIDOM_Element TestResponse::result() const {
    return KRLIDOM_Element(m_response.getFirstChild());
}

std::string TestResponse::resultText() const {
    std::string text;
    writeChildren(result(), text);
    return text;
}
