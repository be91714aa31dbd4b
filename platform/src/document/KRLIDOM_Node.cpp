#include "KRLIDOM_Node.h"

#include "KRLIDOM_Document.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "platform/src/document/KRLIDOM_Guard.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMNode.hpp>

short KRLIDOM_Node::getNodeType() const {
    return isNull() ? short{0} : static_cast<short>(m_node->getNodeType());
}

I18NString KRLIDOM_Node::getNodeName() const {
    return isNull() ? I18NString() : KRLIDOM::text(m_node->getNodeName());
}

I18NString KRLIDOM_Node::getNodeValue() const {
    return isNull() ? I18NString() : KRLIDOM::text(m_node->getNodeValue());
}

KRLIDOM_Node KRLIDOM_Node::getParentNode() const {
    return KRLIDOM_Node(isNull() ? nullptr : m_node->getParentNode());
}

KRLIDOM_Node KRLIDOM_Node::getFirstChild() const {
    return KRLIDOM_Node(isNull() ? nullptr : m_node->getFirstChild());
}

KRLIDOM_Node KRLIDOM_Node::getNextSibling() const {
    return KRLIDOM_Node(isNull() ? nullptr : m_node->getNextSibling());
}

bool KRLIDOM_Node::hasChildNodes() const {
    return !isNull() && m_node->hasChildNodes();
}

KRLIDOM_Document KRLIDOM_Node::getOwnerDocument() const {
    return KRLIDOM_Document(KRLIDOM_Node(isNull() ? nullptr : m_node->getOwnerDocument()));
}

KRLIDOM_NamedNodeMap KRLIDOM_Node::getAttributes() const {
    return KRLIDOM_NamedNodeMap(isNull() ? nullptr : m_node->getAttributes());
}

KRLIDOM_Node KRLIDOM_Node::appendChild(KRLIDOM_Node const& child) const {
    if (isNull() || child.isNull()) {
        return {};
    }
    return KRLIDOM::guarded([&] { return KRLIDOM_Node(m_node->appendChild(child.m_node)); });
}
