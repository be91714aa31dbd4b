#include "KRLIDOM_Helper.h"

#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/util/XMLChar.hpp>

namespace {

// The node after `node` in document order, within the tree below `top`.
xercesc::DOMNode* following(xercesc::DOMNode* node, xercesc::DOMNode const* top) {
    if (xercesc::DOMNode* const child = node->getFirstChild()) {
        return child;
    }
    for (; node != nullptr && node != top; node = node->getParentNode()) {
        if (xercesc::DOMNode* const sibling = node->getNextSibling()) {
            return sibling;
        }
    }
    return nullptr;
}

} // namespace

KRLIDOM_Element KRLIDOM_Helper::findFirstElement(KRLIDOM_Node const& node, I18NString const& tag) {
    for (xercesc::DOMNode* at = node.raw(); at != nullptr; at = following(at, node.raw())) {
        if (at->getNodeType() == xercesc::DOMNode::ELEMENT_NODE &&
            std::u16string_view(at->getNodeName()) == tag.view()) {
            return KRLIDOM_Element(KRLIDOM_Node(at));
        }
    }
    return {};
}

bool KRLIDOM_Helper::isName(I18NString const& text) {
    return !text.empty() && xercesc::XMLChar1_0::isValidName(text.view().data(),
                                                             static_cast<XMLSize_t>(text.length()));
}
