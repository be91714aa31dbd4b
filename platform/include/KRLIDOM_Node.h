#pragma once

#include "I18NString.h"

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

class KRLIDOM_Document;
class KRLIDOM_NamedNodeMap;

/// A reference to a node of an XML document, or to none.
///
/// A small value: copies name the same node, which belongs to its document and
/// goes with it. Every operation is defined on the null node: it gives the null
/// node, 0, "" or false and changes nothing. Text passes between strings and
/// the document as UTF-16, without conversion.
///
/// Threads: one document on one thread at a time.
/// Raises: `KRLLimitException` when the document's byte budget is used up, and when the
/// names that are put into it are more than 50,000 or chosen to be slow to find;
/// `KRLDocumentException` when the document's structure forbids the change.
class VEX_PLATFORM_API KRLIDOM_Node {
public:
    /// @{
    /// The type numbers of DOM.
    static constexpr short ElementNode = 1;
    static constexpr short TextNode = 3;
    static constexpr short DocumentNode = 9;
    /// @}

    KRLIDOM_Node() = default;
    /// Names `node`; null makes the null node.
    explicit KRLIDOM_Node(xercesc::DOMNode* node) : m_node(node) {}

    /// True when no node is named.
    bool isNull() const { return m_node == nullptr; }
    /// One of the numbers above, or another of DOM's.
    short getNodeType() const;
    /// An element's tag, an attribute's name, "#text", "#document".
    I18NString getNodeName() const;
    /// An attribute's or text node's text.
    I18NString getNodeValue() const;

    /// @{
    /// The neighbour in the document; null when there is none.
    KRLIDOM_Node getParentNode() const;
    KRLIDOM_Node getFirstChild() const;
    KRLIDOM_Node getNextSibling() const;
    /// @}
    /// Text nodes are children, too.
    bool hasChildNodes() const;
    /// Null for a document node, which is its own document.
    KRLIDOM_Document getOwnerDocument() const;
    /// Empty for anything but an element.
    KRLIDOM_NamedNodeMap getAttributes() const;

    /// Puts `child` last among this node's children; a node that already has a
    /// place leaves it. Gives `child`.
    KRLIDOM_Node appendChild(KRLIDOM_Node const& child) const;

    /// @{
    /// Equal when they name the same node; contents are not compared.
    friend bool operator==(KRLIDOM_Node a, KRLIDOM_Node b) { return a.m_node == b.m_node; }
    friend bool operator!=(KRLIDOM_Node a, KRLIDOM_Node b) { return !(a == b); }
    /// @}

    /// The node beneath, for the platform's own sources.
    xercesc::DOMNode* raw() const { return m_node; }

protected:
    xercesc::DOMNode* m_node = nullptr; ///< null for the null node
};
