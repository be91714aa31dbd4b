#include "provider/request/VexMDMaProviderHelper.h"

#include "KRLIDOM_Document.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "provider/VexConstants.h"

VexMDMaProviderHelper::VexMDMaProviderHelper(KRLIDOM_Node const& node) : m_request(node) {}

void VexMDMaProviderHelper::ProcessClientRequest() {
    KRLIDOM_Node document = m_request.getOwnerDocument();
    if (document.isNull()) {
        document = m_request;
    }
    ProcessNode(document.getFirstChild());
}

void VexMDMaProviderHelper::ProcessNode(KRLIDOM_Node node) {
    // A walk without recursion: how deep a request nests is the client's choice.
    KRLIDOM_Node const top = node.getParentNode();
    while (!node.isNull()) {
        if (node.getNodeType() == KRLIDOM_Node::ElementNode) {
            processElement(node);
        }
        KRLIDOM_Node next = node.getFirstChild();
        while (next.isNull() && node != top) {
            next = node.getNextSibling();
            node = node.getParentNode();
        }
        node = next;
    }
}

void VexMDMaProviderHelper::processElement(KRLIDOM_Node const& element) {
    KRLIDOM_NamedNodeMap const attributes = element.getAttributes();
    for (std::size_t index = 0; index < attributes.getLength(); ++index) {
        KRLIDOM_Attr const attribute = attributes.item(index);
        if (attribute.getSpecified()) {
            processAttribute(element.getNodeName(), attribute.getName(), attribute.getValue());
        }
    }
}

void VexMDMaProviderHelper::processAttribute(I18NString const& element, I18NString const& name,
                                             I18NString const& value) {
    if (element == "Metadata") {
        m_options.emplace(name, value);
    } else if (element == "Functions") {
        // quirk: functions-mark-rides-on-attributes
        // The mark of a function request rides on the element's attributes: one
        // without attributes asks for nothing. Kept on purpose.
        m_options.emplace(I18NString("function"), I18NString("1"));
        m_options.emplace(name, value);
    } else if (element == "Property") {
        auto& requests = value.find(u'@') >= 0 ? m_attributeRequests : m_collectionRequests;
        requests.add(value);
    } else if (element == "Constraint") {
        storeConstraint(value);
    }
}

void VexMDMaProviderHelper::storeConstraint(I18NString const& text) {
    // key=[value], whatever the opening character is. A text without "=" or "]"
    // is cut with the -1 that the search gives, and stored as it comes out.
    int const equals = text.find(u'=');
    I18NString const rest = text.substring(equals + 1, -1);
    int const close = rest.find(u']');
    m_constraints.emplace(text.substring(0, equals), rest.substring(1, close - 1));
}

I18NString VexMDMaProviderHelper::GetAttributeValueForAttribute(I18NString const& name) const {
    auto const option = m_options.find(name);
    return option != m_options.end() ? option->second : I18NString();
}
