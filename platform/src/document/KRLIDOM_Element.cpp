#include "KRLIDOM_Element.h"

#include "KRLIDOM_Attr.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "KRLIDOM_Text.h"
#include "platform/src/document/KRLIDOM_Guard.h"
#include "platform/src/document/KRLIDOM_State.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

namespace {

KRLIDOM_Node ofType(KRLIDOM_Node const& node, xercesc::DOMNode::NodeType type) {
    return node.getNodeType() == type ? node : KRLIDOM_Node();
}

} // namespace

KRLIDOM_Element::KRLIDOM_Element(KRLIDOM_Node const& node)
    : KRLIDOM_Node(ofType(node, xercesc::DOMNode::ELEMENT_NODE)) {}

I18NString KRLIDOM_Element::getAttribute(I18NString const& name) const {
    if (isNull()) {
        return {};
    }
    return KRLIDOM::text(static_cast<xercesc::DOMElement*>(m_node)->getAttribute(name.utf16()));
}

void KRLIDOM_Element::setAttribute(I18NString const& name, I18NString const& value) const {
    if (isNull()) {
        return;
    }
    if (KRLIDOM_Budget* const budget = KRLIDOM::budgetOf(m_node->getOwnerDocument())) {
        budget->names.add(name.utf16(), name.view().size());
    }
    KRLIDOM::guarded([&] {
        static_cast<xercesc::DOMElement*>(m_node)->setAttribute(name.utf16(), value.utf16());
    });
}

KRLIDOM_Attr::KRLIDOM_Attr(KRLIDOM_Node const& node)
    : KRLIDOM_Node(ofType(node, xercesc::DOMNode::ATTRIBUTE_NODE)) {}

bool KRLIDOM_Attr::getSpecified() const {
    return !isNull() && static_cast<xercesc::DOMAttr*>(m_node)->getSpecified();
}

KRLIDOM_Text::KRLIDOM_Text(KRLIDOM_Node const& node)
    : KRLIDOM_Node(ofType(node, xercesc::DOMNode::TEXT_NODE)) {}

std::size_t KRLIDOM_NamedNodeMap::getLength() const {
    return m_map == nullptr ? 0 : m_map->getLength();
}

KRLIDOM_Attr KRLIDOM_NamedNodeMap::item(std::size_t index) const {
    return KRLIDOM_Attr(KRLIDOM_Node(m_map == nullptr ? nullptr : m_map->item(index)));
}
