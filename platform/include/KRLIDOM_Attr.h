#pragma once

#include "KRLIDOM_Node.h"

/// An attribute of an element, or none.
class VEX_PLATFORM_API KRLIDOM_Attr : public KRLIDOM_Node {
public:
    KRLIDOM_Attr() = default;
    /// Null when `node` is not an attribute.
    explicit KRLIDOM_Attr(KRLIDOM_Node const& node);

    /// @{
    /// The words of DOM for an attribute's `getNodeName` and `getNodeValue`.
    I18NString getName() const { return getNodeName(); }
    I18NString getValue() const { return getNodeValue(); }
    /// @}
    /// False for an attribute that only a document type's default gave.
    bool getSpecified() const;
};
