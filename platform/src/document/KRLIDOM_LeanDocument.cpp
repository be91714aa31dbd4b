#include "platform/src/document/KRLIDOM_LeanDocument.h"

#include "platform/src/document/KRLIDOM_LeanNodes.h"

#include <algorithm>
#include <utility>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/dom/DOMImplementation.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace {

constexpr XMLSize_t largestPiece = 4U << 10U; // a larger one has a block of its own
constexpr XMLSize_t largestBlock = 512U << 10U;

XMLSize_t aligned(XMLSize_t amount) {
    return xercesc::XMLPlatformUtils::alignPointerForNewBlockAllocation(amount);
}

} // namespace

KRLIDOM_LeanDocument::KRLIDOM_LeanDocument(xercesc::MemoryManager* memory)
    : DOMDocumentImpl(xercesc::DOMImplementation::getImplementation(), memory) {}

xercesc::DOMElement* KRLIDOM_LeanDocument::createElement(char16_t const* name) {
    requireName(name);
    return new (this, ELEMENT_OBJECT) KRLIDOM_LeanElement(this, name);
}

// Takes no memory that was given back: an attribute of the library's own is smaller.
xercesc::DOMAttr* KRLIDOM_LeanDocument::createAttribute(char16_t const* name) {
    requireName(name);
    return new (allocate(sizeof(KRLIDOM_LeanAttr))) KRLIDOM_LeanAttr(this, name);
}

void* KRLIDOM_LeanDocument::allocate(XMLSize_t amount) {
    XMLSize_t const size = aligned(amount);
    if (size > fFreeBytesRemaining) {
        if (size > largestPiece) {
            return DOMDocumentImpl::allocate(amount);
        }
        startBlock();
    }
    fFreeBytesRemaining -= size;
    return std::exchange(fFreePtr, fFreePtr + size);
}

// As the library does, which gives the blocks back: each begins with the one before it.
void KRLIDOM_LeanDocument::startBlock() {
    auto* const block = static_cast<char*>(getMemoryManager()->allocate(fHeapAllocSize));
    ::new (block) void*(std::exchange(fCurrentBlock, block));
    XMLSize_t const header = aligned(sizeof(void*));
    fFreePtr = block + header;
    fFreeBytesRemaining = fHeapAllocSize - header;
    fHeapAllocSize = std::min(2 * fHeapAllocSize, largestBlock);
}

// Each node asks for the memory by this, and the library compares the names.
void* KRLIDOM_LeanDocument::getFeature(char16_t const* feature, char16_t const* version) const {
    if (feature == xercesc::XMLUni::fgXercescInterfaceDOMMemoryManager) {
        return const_cast<DOMMemoryManager*>(static_cast<DOMMemoryManager const*>(this));
    }
    return DOMDocumentImpl::getFeature(feature, version);
}

void KRLIDOM_LeanDocument::requireName(char16_t const* name) {
    if (name == nullptr || !isXMLName(name)) {
        throw xercesc::DOMException(xercesc::DOMException::INVALID_CHARACTER_ERR, 0,
                                    getMemoryManager());
    }
}
