#pragma once

#include "KRLIDOM_Platform.h"

#include <memory>

#include <xercesc/dom/DOM.hpp>

/// What the XML library makes and takes back by `release`.
struct ReleaseToLibrary {
    template <class Resource> void operator()(Resource* resource) const { resource->release(); }
};

template <class Resource> using OfLibrary = std::unique_ptr<Resource, ReleaseToLibrary>;

/// An empty document as the XML library makes it itself.
inline OfLibrary<xercesc::DOMDocument> libraryDocument() {
    KRLIDOM_Initialize();
    return OfLibrary<xercesc::DOMDocument>(
        xercesc::DOMImplementation::getImplementation()->createDocument());
}
