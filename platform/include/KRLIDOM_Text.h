#pragma once

#include "KRLIDOM_Node.h"

/// A text node of a document, or none.
class VEX_PLATFORM_API KRLIDOM_Text : public KRLIDOM_Node {
public:
    KRLIDOM_Text() = default;
    /// Null when `node` is not a text node.
    explicit KRLIDOM_Text(KRLIDOM_Node const& node);

    /// The words of DOM for a text node's `getNodeValue`.
    I18NString getData() const { return getNodeValue(); }
};
