#include "platform/src/document/KRLIDOM_LeanNodes.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMCasts.hpp>
#include <xercesc/dom/impl/DOMNodeVector.hpp>

using xercesc::DOMAttrImpl;
using xercesc::DOMDocumentImpl;
using xercesc::DOMElementImpl;
using xercesc::DOMNode;

namespace {

constexpr XMLSize_t usualAttributes = 10; // the library's own first room

// Way to the list that a map of attributes keeps by their names.
struct AttributeList : xercesc::DOMAttrMapImpl {
    static xercesc::DOMNodeVector* of(DOMAttrMapImpl& map) { return map.*&AttributeList::fNodes; }
};

DOMElementImpl* asElement(DOMNode* node) {
    return node->getNodeType() == DOMNode::ELEMENT_NODE ? static_cast<DOMElementImpl*>(node)
                                                        : nullptr;
}

xercesc::DOMChildNode& placeOf(DOMNode* node) {
    DOMElementImpl* const element = asElement(node);
    return element == nullptr ? *xercesc::castToChildImpl(node) : element->fChild;
}

} // namespace

char16_t const* KRLIDOM_LeanAttr::getValue() const {
    return m_value == nullptr ? DOMAttrImpl::getValue() : m_value;
}

void KRLIDOM_LeanAttr::setValue(char16_t const* value) {
    if (value == nullptr || fParent.fFirstChild != nullptr || fNode.isReadOnly() ||
        fNode.isIdAttr()) {
        withText().DOMAttrImpl::setValue(value);
        return;
    }
    std::u16string_view const text(value);
    if (m_value == nullptr || text.size() > m_room) {
        auto* const document = static_cast<DOMDocumentImpl*>(fParent.fOwnerDocument);
        m_value = static_cast<char16_t*>(document->allocate((text.size() + 1) * sizeof(char16_t)));
        m_room = static_cast<std::uint32_t>(std::min<std::size_t>(text.size(), UINT32_MAX));
    }
    *std::copy(text.begin(), text.end(), m_value) = 0; // a part of the old value, too
    fNode.isSpecified(true);
    fParent.changed();
}

DOMAttrImpl& KRLIDOM_LeanAttr::withText() const {
    auto& self = const_cast<KRLIDOM_LeanAttr&>(*this);
    if (m_value != nullptr) {
        DOMNode* const text = fParent.fOwnerDocument->createTextNode(m_value);
        self.m_value = nullptr;
        self.fParent.appendChildFast(text);
    }
    return self;
}

DOMNode* KRLIDOM_LeanAttr::appendChild(DOMNode* child) {
    return withText().DOMAttrImpl::appendChild(child);
}

DOMNode* KRLIDOM_LeanAttr::insertBefore(DOMNode* child, DOMNode* before) {
    return withText().DOMAttrImpl::insertBefore(child, before);
}

DOMNode* KRLIDOM_LeanAttr::replaceChild(DOMNode* child, DOMNode* old) {
    return withText().DOMAttrImpl::replaceChild(child, old);
}

DOMNode* KRLIDOM_LeanAttr::removeChild(DOMNode* child) {
    return withText().DOMAttrImpl::removeChild(child);
}

DOMNode* KRLIDOM_LeanAttr::getFirstChild() const {
    return withText().DOMAttrImpl::getFirstChild();
}

DOMNode* KRLIDOM_LeanAttr::getLastChild() const {
    return withText().DOMAttrImpl::getLastChild();
}

xercesc::DOMNodeList* KRLIDOM_LeanAttr::getChildNodes() const {
    return withText().DOMAttrImpl::getChildNodes();
}

bool KRLIDOM_LeanAttr::hasChildNodes() const {
    return m_value != nullptr || DOMAttrImpl::hasChildNodes();
}

DOMNode* KRLIDOM_LeanAttr::cloneNode(bool deep) const {
    return withText().DOMAttrImpl::cloneNode(deep);
}

bool KRLIDOM_LeanAttr::isEqualNode(DOMNode const* other) const {
    return withText().DOMAttrImpl::isEqualNode(other);
}

char16_t const* KRLIDOM_LeanAttr::getTextContent() const {
    return withText().DOMAttrImpl::getTextContent();
}

void KRLIDOM_LeanAttr::setTextContent(char16_t const* text) {
    withText().DOMAttrImpl::setTextContent(text);
}

void KRLIDOM_LeanElement::setAttribute(char16_t const* name, char16_t const* value) {
    int const found = fAttributes->findNamePoint(name);
    if (fNode.isReadOnly() || found >= 0) {
        DOMElementImpl::setAttribute(name, value);
        return;
    }
    auto& attribute = static_cast<DOMAttrImpl&>(*fParent.fOwnerDocument->createAttribute(name));
    attribute.setValue(value);
    if (AttributeList::of(*fAttributes) == nullptr) {
        fAttributes->reserve(usualAttributes);
    }
    auto const place = static_cast<XMLSize_t>(-1 - found); // where it would be
    AttributeList::of(*fAttributes)->insertElementAt(&attribute, place);
    attribute.fNode.fOwnerNode = this;
    attribute.fNode.isOwned(true);
}

DOMNode* KRLIDOM_LeanElement::appendChild(DOMNode* child) {
    if (!takes(child)) {
        return DOMElementImpl::appendChild(child);
    }
    auto& element = static_cast<DOMElementImpl&>(*child);
    element.fNode.fOwnerNode = this;
    element.fNode.isOwned(true);
    if (fParent.fFirstChild == nullptr) {
        fParent.fFirstChild = child;
        element.fNode.isFirstChild(true);
        element.fChild.previousSibling = child; // the first one knows the last one by this
    } else {
        xercesc::DOMChildNode& first = placeOf(fParent.fFirstChild);
        DOMNode* const last = std::exchange(first.previousSibling, child);
        placeOf(last).nextSibling = child;
        element.fChild.previousSibling = last;
    }
    fParent.changed();
    return child;
}

// An element of this document that has no place yet and no children, so that it cannot be
// above this one; and nobody follows what changes.
bool KRLIDOM_LeanElement::takes(DOMNode* child) const {
    if (child == nullptr || asElement(child) == nullptr) {
        return false;
    }
    auto const& element = static_cast<DOMElementImpl const&>(*child);
    auto const* const document = static_cast<DOMDocumentImpl const*>(fParent.fOwnerDocument);
    return !fNode.isReadOnly() && !element.fNode.isOwned() &&
           element.fParent.fFirstChild == nullptr && element.fParent.fOwnerDocument == document &&
           child != this && document->getRanges() == nullptr;
}
