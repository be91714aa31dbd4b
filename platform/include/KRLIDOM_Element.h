#pragma once

#include "KRLIDOM_Node.h"

/// An element of a document, or none.
class VEX_PLATFORM_API KRLIDOM_Element : public KRLIDOM_Node {
public:
    KRLIDOM_Element() = default;
    /// Null when `node` is not an element.
    explicit KRLIDOM_Element(KRLIDOM_Node const& node);

    /// The words of DOM for an element's `getNodeName`.
    I18NString getTagName() const { return getNodeName(); }

    /// The attribute's text; "" when there is none.
    I18NString getAttribute(I18NString const& name) const;

    /// Sets the attribute, replacing an earlier text. A name that is no XML
    /// name raises `KRLDocumentException`; ask `KRLIDOM_Helper::isName` first.
    void setAttribute(I18NString const& name, I18NString const& value) const;
};
