#include "KRLIDOM_Writer.h"

#include "KRLException.h"
#include "platform/src/document/KRLIDOM_Layout.h"
#include "platform/src/document/KRLIDOM_Version.h"
#include "platform/src/document/KRLIDOM_XmlText.h"

#include <ostream>
#include <string_view>

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>

namespace {

using xercesc::DOMNode;
using Place = KRLIDOM_XmlText::Place;

xercesc::DOMDocument const* documentOf(DOMNode const* node) {
    return node->getNodeType() == DOMNode::DOCUMENT_NODE
               ? static_cast<xercesc::DOMDocument const*>(node)
               : node->getOwnerDocument();
}

// Opens a node and what is below it in document order, and closes those that have children.
// Without recursion: a document may be of any depth.
template <class Visitor> void walk(DOMNode const* top, Visitor& visitor) {
    for (DOMNode const* at = top; at != nullptr;) {
        DOMNode const* next = visitor.open(at);
        while (next == nullptr && at != top) {
            next = at->getNextSibling();
            if (next == nullptr) {
                at = at->getParentNode();
                visitor.close(at);
            }
        }
        at = next;
    }
}

[[noreturn]] void raiseNoSuchNode() {
    throw KRLDocumentException("", 0, 0,
                               "The document cannot be written as XML: it has a node that is no "
                               "element, attribute, text, comment or instruction");
}

// Looks whether everything can be written.
class NodeChecker {
public:
    explicit NodeChecker(KRLIDOM_XmlText const& text) : m_text(text) {}

    DOMNode const* open(DOMNode const* node) {
        switch (node->getNodeType()) {
        case DOMNode::DOCUMENT_NODE:
        case DOMNode::DOCUMENT_FRAGMENT_NODE:
            return node->getFirstChild();
        case DOMNode::ELEMENT_NODE:
            checkAttributes(*node->getAttributes());
            return node->getFirstChild();
        case DOMNode::TEXT_NODE:
        case DOMNode::ATTRIBUTE_NODE:
        case DOMNode::COMMENT_NODE:
        case DOMNode::PROCESSING_INSTRUCTION_NODE:
        case DOMNode::CDATA_SECTION_NODE:
            m_text.check(node->getNodeValue());
            return nullptr;
        default:
            raiseNoSuchNode();
        }
    }

    void close(DOMNode const*) {}

private:
    void checkAttributes(xercesc::DOMNamedNodeMap const& attributes) {
        XMLSize_t const count = attributes.getLength();
        for (XMLSize_t i = 0; i < count; ++i) {
            m_text.check(attributes.item(i)->getNodeValue());
        }
    }

    KRLIDOM_XmlText const& m_text;
};

class NodeWriter {
public:
    NodeWriter(KRLIDOM_XmlText& out, bool pretty) : m_out(out), m_layout(out, pretty) {}

    // The first child, which is to be written next; null for a node that is done.
    DOMNode const* open(DOMNode const* node) {
        switch (node->getNodeType()) {
        case DOMNode::DOCUMENT_NODE:
        case DOMNode::DOCUMENT_FRAGMENT_NODE:
            return openDocument(node);
        case DOMNode::ELEMENT_NODE:
            return openElement(node);
        case DOMNode::TEXT_NODE:
            m_layout.text(node->getNodeValue());
            m_out.put(node->getNodeValue(), Place::Content);
            break;
        case DOMNode::ATTRIBUTE_NODE:
            putAttribute(node);
            break;
        case DOMNode::COMMENT_NODE:
            putComment(node);
            break;
        case DOMNode::PROCESSING_INSTRUCTION_NODE:
            putInstruction(node);
            break;
        case DOMNode::CDATA_SECTION_NODE:
            putMarkedSections(node);
            break;
        default:
            raiseNoSuchNode();
        }
        return nullptr;
    }

    void close(DOMNode const* node) {
        if (node->getNodeType() != DOMNode::ELEMENT_NODE) {
            m_layout.breakLine();
            return;
        }
        m_layout.closeElement();
        m_out.put("</");
        m_out.put(node->getNodeName(), Place::Markup);
        m_out.put(">");
    }

private:
    DOMNode const* openDocument(DOMNode const* node) {
        DOMNode const* const child = node->getFirstChild();
        if (child == nullptr) {
            close(node);
        }
        return child;
    }

    DOMNode const* openElement(DOMNode const* node) {
        DOMNode const* const child = node->getFirstChild();
        m_layout.openElement(child != nullptr);
        m_out.put("<");
        m_out.put(node->getNodeName(), Place::Markup);
        xercesc::DOMNamedNodeMap const* const attributes = node->getAttributes();
        XMLSize_t const count = attributes->getLength();
        for (XMLSize_t i = 0; i < count; ++i) {
            auto const* const attribute = static_cast<xercesc::DOMAttr const*>(attributes->item(i));
            if (attribute->getSpecified()) {
                m_out.put(" ");
                putAttribute(attribute);
            }
        }
        m_out.put(child == nullptr ? "/>" : ">");
        return child;
    }

    void putAttribute(DOMNode const* attribute) {
        m_out.put(attribute->getNodeName(), Place::Markup);
        m_out.put("=\"");
        m_out.put(attribute->getNodeValue(), Place::Attribute);
        m_out.put("\"");
    }

    void putComment(DOMNode const* node) {
        auto const text = m_out.check(node->getNodeValue());
        m_layout.comment(node);
        m_out.put("<!--");
        m_out.put(text, Place::Markup);
        m_out.put("-->");
    }

    void putInstruction(DOMNode const* node) {
        auto const data = m_out.check(node->getNodeValue());
        m_layout.instruction();
        m_out.put("<?");
        m_out.put(node->getNodeName(), Place::Markup);
        if (!data.text.empty()) {
            m_out.put(" ");
            m_out.put(data, Place::Markup);
        }
        m_out.put("?>");
    }

    // What would end a section goes, and what is behind it gets a section of its own.
    void putMarkedSections(DOMNode const* node) {
        constexpr std::u16string_view end = u"]]>";
        auto const whole = m_out.check(node->getNodeValue());
        std::u16string_view rest = whole.text;
        for (std::size_t found = 0; found != std::u16string_view::npos;) {
            found = rest.find(end);
            m_out.put("<![CDATA[");
            m_out.put({rest.substr(0, found), whole.marks}, Place::Markup);
            m_out.put("]]>");
            rest.remove_prefix(found == std::u16string_view::npos ? 0 : found + end.size());
        }
    }

    KRLIDOM_XmlText& m_out;
    KRLIDOM_Layout m_layout;
};

void writeTo(KRLIDOM_XmlText::Sink const& sink, KRLIDOM_Node const& node, bool pretty) {
    if (node.isNull()) {
        return;
    }
    KRLIDOM_XmlText out(sink, KRLIDOM::isVersion11(documentOf(node.raw())));
    try {
        NodeWriter writer(out, pretty);
        walk(node.raw(), writer);
    } catch (KRLException const&) {
        out.flush(); // what comes before stays written
        throw;
    }
    if (pretty) {
        out.endLine();
    }
    out.flush();
}

} // namespace

void KRLIDOM_Writer::write(std::ostream& out, KRLIDOM_Node const& node, bool pretty) {
    writeTo(
        [&out](std::string_view text) {
            out.write(text.data(), static_cast<std::streamsize>(text.size()));
        },
        node, pretty);
}

void KRLIDOM_Writer::check(KRLIDOM_Node const& node) {
    if (!node.isNull()) {
        KRLIDOM_XmlText::Sink const none;
        KRLIDOM_XmlText const text(none, KRLIDOM::isVersion11(documentOf(node.raw())));
        NodeChecker checker(text);
        walk(node.raw(), checker);
    }
}

std::string KRLIDOM_Writer::toUtf8(KRLIDOM_Node const& node, bool pretty) {
    std::string utf8;
    writeTo([&utf8](std::string_view text) { utf8 += text; }, node, pretty);
    return utf8;
}
