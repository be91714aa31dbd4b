#pragma once

#include <string_view>

#include <xercesc/dom/DOMDocument.hpp>

namespace KRLIDOM {

/// Whether a document says that it is one of XML 1.1; null is none.
inline bool isVersion11(xercesc::DOMDocument const* document) {
    char16_t const* const version = document == nullptr ? nullptr : document->getXmlVersion();
    return version != nullptr && std::u16string_view(version) == u"1.1";
}

} // namespace KRLIDOM
