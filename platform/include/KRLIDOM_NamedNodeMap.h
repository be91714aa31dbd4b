#pragma once

#include "KRLIDOM_Attr.h"

#include <cstddef>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNamedNodeMap;
XERCES_CPP_NAMESPACE_END

/// The attributes of an element. Their order is the map's own, not the
/// document's. Valid while the element stays unchanged.
class VEX_PLATFORM_API KRLIDOM_NamedNodeMap {
public:
    KRLIDOM_NamedNodeMap() = default;
    /// Null makes a map without attributes.
    explicit KRLIDOM_NamedNodeMap(xercesc::DOMNamedNodeMap* map) : m_map(map) {}

    /// How many attributes `item` can give.
    std::size_t getLength() const;
    /// The null attribute past the end.
    KRLIDOM_Attr item(std::size_t index) const;

private:
    xercesc::DOMNamedNodeMap* m_map = nullptr;
};
