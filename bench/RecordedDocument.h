#pragma once

#include <string>
#include <string_view>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMNode;
class MemoryManager;
class XMLFormatTarget;
XERCES_CPP_NAMESPACE_END

namespace bench {

/// The elements and attributes of a document as one row of UTF-16 strings, each
/// with a zero behind it, ready to be handed to Xerces-C. An element is a mark,
/// its tag, the names and values of its attributes, an empty string, its child
/// elements, another mark.
std::u16string record(xercesc::DOMNode const* element);

/// Builds the document again with bare Xerces-C calls. Release it after use.
xercesc::DOMDocument* buildBare(std::u16string_view recorded, xercesc::MemoryManager* memory);

/// Writes the document with Xerces-C's serialiser as it comes.
void serialiseBare(xercesc::DOMNode const* document, xercesc::XMLFormatTarget& target);

} // namespace bench
