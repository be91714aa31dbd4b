#include "bench/RecordedDocument.h"

#include "KRLIDOM_Platform.h"

#include <memory>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/XMLFormatter.hpp>

namespace bench {

namespace {

constexpr char16_t openMark = 1;
constexpr char16_t closeMark = 2;

/// The string at the front of `rest`, which loses it.
char16_t const* take(std::u16string_view& rest) {
    char16_t const* const text = rest.data();
    rest.remove_prefix(std::char_traits<char16_t>::length(text) + 1);
    return text;
}

void appendElement(std::u16string& recorded, xercesc::DOMNode const* element) {
    auto const append = [&recorded](char16_t const* text) { recorded.append(text) += u'\0'; };
    recorded += openMark;
    append(element->getNodeName());
    xercesc::DOMNamedNodeMap const* const attributes = element->getAttributes();
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
        append(attributes->item(i)->getNodeName());
        append(attributes->item(i)->getNodeValue());
    }
    append(u"");
}

} // namespace

std::u16string record(xercesc::DOMNode const* element) {
    std::u16string recorded;
    xercesc::DOMNode const* at = element;
    while (at != nullptr) {
        appendElement(recorded, at);
        xercesc::DOMNode const* next = at->getFirstChild();
        while (next == nullptr) {
            recorded += closeMark;
            if (at == element) {
                return recorded;
            }
            next = at->getNextSibling();
            at = at->getParentNode();
        }
        at = next;
    }
    return recorded;
}

xercesc::DOMDocument* buildBare(std::u16string_view recorded, xercesc::MemoryManager* memory) {
    KRLIDOM_Initialize();
    xercesc::DOMDocument* const document =
        xercesc::DOMImplementation::getImplementation()->createDocument(memory);
    xercesc::DOMNode* parent = document;
    while (!recorded.empty()) {
        char16_t const mark = recorded.front();
        recorded.remove_prefix(1);
        if (mark == closeMark) {
            parent = parent->getParentNode();
            continue;
        }
        xercesc::DOMElement* const element = document->createElement(take(recorded));
        while (recorded.front() != 0) {
            char16_t const* const name = take(recorded);
            element->setAttribute(name, take(recorded));
        }
        recorded.remove_prefix(1);
        parent = parent->appendChild(element);
    }
    return document;
}

void serialiseBare(xercesc::DOMNode const* document, xercesc::XMLFormatTarget& target) {
    xercesc::DOMImplementation* const implementation =
        xercesc::DOMImplementation::getImplementation();
    xercesc::DOMLSSerializer* const serializer = implementation->createLSSerializer();
    xercesc::DOMLSOutput* const output = implementation->createLSOutput();
    output->setByteStream(&target);
    output->setEncoding(xercesc::XMLUni::fgUTF8EncodingString);
    serializer->write(document, output);
    output->release();
    serializer->release();
}

} // namespace bench
