#pragma once

#include <xercesc/dom/impl/DOMDocumentImpl.hpp>

/// A document of the library whose elements and attributes are lean: those of answers, which
/// are many.
class KRLIDOM_LeanDocument final : public xercesc::DOMDocumentImpl {
public:
    explicit KRLIDOM_LeanDocument(xercesc::MemoryManager* memory);

    xercesc::DOMElement* createElement(char16_t const* name) override;
    xercesc::DOMAttr* createAttribute(char16_t const* name) override;
    /// Cuts pieces off blocks of up to 512 KB; the library would ask for a block of its own
    /// for each piece of more than 256 bytes, a value of 128 characters.
    void* allocate(XMLSize_t amount) override;
    using DOMDocumentImpl::allocate;
    void* getFeature(char16_t const* feature, char16_t const* version) const override;

private:
    void requireName(char16_t const* name);
    void startBlock();
};
