#include "host/import/xml/DocumentOutline.h"

#include "I18NStringIterator.h"
#include "KRLException.h"
#include "host/import/xml/ModelLoader.h"
#include "host/import/xml/SaxDocument.h"

#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>

namespace vex {

namespace {

class OutlineReader final : public SaxHandler {
public:
    std::vector<OutlinedElement> take() { return std::move(m_elements); }

    [[noreturn]] void refuse(char const* /*rule*/, std::string /*text*/) override { stop(); }
    void setDocumentLocator(xercesc::Locator const* locator) override { m_locator = locator; }

    void startElement(XMLCh const* /*uri*/, XMLCh const* /*localName*/, XMLCh const* name,
                      xercesc::Attributes const& attributes) override {
        OutlinedElement& element = m_elements.emplace_back();
        element.tag = I18NString(std::u16string_view(name));
        for (XMLSize_t index = 0; index < attributes.getLength(); ++index) {
            element.attributes.emplace_back(
                I18NString(std::u16string_view(attributes.getQName(index))),
                I18NString(std::u16string_view(attributes.getValue(index))));
        }
        element.position = positionOf(*m_locator);
        element.container = m_open.empty() ? OutlinedElement::None : m_open.back();
        m_open.push_back(m_elements.size() - 1);
    }

    void endElement(XMLCh const* /*uri*/, XMLCh const* /*localName*/,
                    XMLCh const* /*name*/) override {
        I18NString& text = m_elements[m_open.back()].text;
        while (!text.empty() && I18NCodePointIsWhitespace(text[text.length() - 1])) {
            text = text.substring(0, text.length() - 1);
        }
        m_open.pop_back();
    }

    void characters(XMLCh const* text, XMLSize_t length) override {
        I18NString& all = m_elements[m_open.back()].text;
        std::u16string_view rest(text, length);
        while (all.empty() && !rest.empty() && I18NCodePointIsWhitespace(rest.front())) {
            rest.remove_prefix(1);
        }
        constexpr int enough = 200; // it is quoted, at most
        if (all.length() < enough) {
            all.append(rest.substr(0, enough));
        }
    }

    void startDTD(XMLCh const* /*name*/, XMLCh const* /*publicId*/,
                  XMLCh const* /*systemId*/) override {
        stop();
    }
    void error(xercesc::SAXParseException const& /*problem*/) override { stop(); }
    void fatalError(xercesc::SAXParseException const& /*problem*/) override { stop(); }

private:
    [[noreturn]] static void stop() { throw KRLDocumentException("", 0, 0, "no outline"); }

    xercesc::Locator const* m_locator = nullptr;
    std::vector<OutlinedElement> m_elements;
    std::vector<std::size_t> m_open;
};

} // namespace

std::vector<OutlinedElement> outlineOf(std::string_view xml) {
    if (xml.empty()) {
        return {};
    }
    OutlineReader reader;
    MemorySource source(xml);
    try {
        readSax(source, reader, DocumentLimits().attributesPerElement);
    } catch (KRLDocumentException const& /*problem*/) { // told by who read it before
    }
    return reader.take();
}

} // namespace vex
