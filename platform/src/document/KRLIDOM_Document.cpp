#include "KRLIDOM_Document.h"

#include "KRLException.h"
#include "platform/src/document/KRLIDOM_Guard.h"
#include "platform/src/document/KRLIDOM_State.h"

#include <string>

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMText.hpp>

namespace {

xercesc::DOMDocument* documentOf(KRLIDOM_Node const& node) {
    if (node.getNodeType() == KRLIDOM_Node::DocumentNode) {
        return static_cast<xercesc::DOMDocument*>(node.raw());
    }
    return node.isNull() ? nullptr : node.raw()->getOwnerDocument();
}

[[noreturn]] void raiseTooManyElements(KRLIDOM_Budget const& budget) {
    throw KRLLimitException("The document holds " + std::to_string(budget.limit) +
                            " elements, which is the limit. Ask for less with \"Depth\" or a start "
                            "path, or raise the limit" +
                            KRLIDOM::withName(budget.limitName));
}

} // namespace

KRLIDOM_Document::KRLIDOM_Document(KRLIDOM_Node const& node) : KRLIDOM_Node(documentOf(node)) {
    if (!isNull()) {
        m_budget = KRLIDOM::budgetOf(static_cast<xercesc::DOMDocument*>(m_node));
    }
}

KRLIDOM_Element KRLIDOM_Document::getDocumentElement() const {
    return KRLIDOM_Element(KRLIDOM_Node(
        isNull() ? nullptr : static_cast<xercesc::DOMDocument*>(m_node)->getDocumentElement()));
}

KRLIDOM_Element KRLIDOM_Document::createElement(I18NString const& tag) const {
    requireRoom();
    KRLIDOM_Element const element = createSpareElement(tag);
    if (m_budget != nullptr) {
        ++m_budget->elements;
    }
    return element;
}

KRLIDOM_Element KRLIDOM_Document::createSpareElement(I18NString const& tag) const {
    if (isNull()) {
        return {};
    }
    if (m_budget != nullptr) {
        m_budget->names.add(tag.utf16(), tag.view().size());
    }
    return KRLIDOM::guarded([&] {
        return KRLIDOM_Element(
            KRLIDOM_Node(static_cast<xercesc::DOMDocument*>(m_node)->createElement(tag.utf16())));
    });
}

KRLIDOM_Node KRLIDOM_Document::appendSpare(KRLIDOM_Node const& parent,
                                           KRLIDOM_Element const& spare) const {
    requireRoom();
    KRLIDOM_Node const appended = parent.appendChild(spare);
    if (m_budget != nullptr && !appended.isNull()) {
        ++m_budget->elements;
    }
    return appended;
}

void KRLIDOM_Document::requireRoom() const {
    if (m_budget != nullptr && m_budget->elements >= m_budget->limit) {
        raiseTooManyElements(*m_budget);
    }
}

KRLIDOM_Text KRLIDOM_Document::createTextNode(I18NString const& text) const {
    if (isNull()) {
        return {};
    }
    return KRLIDOM::guarded([&] {
        return KRLIDOM_Text(
            KRLIDOM_Node(static_cast<xercesc::DOMDocument*>(m_node)->createTextNode(text.utf16())));
    });
}
