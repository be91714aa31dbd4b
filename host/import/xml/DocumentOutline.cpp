#include "host/import/xml/DocumentOutline.h"

#include "I18NStringIterator.h"
#include "KRLException.h"
#include "host/import/xml/ModelLoader.h"
#include "host/import/xml/SaxDocument.h"

#include <utility>

#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>

namespace vex {

namespace {

constexpr std::uint32_t noContainer = static_cast<std::uint32_t>(-1);

class OutlineReader final : public SaxHandler {
public:
    explicit OutlineReader(std::size_t bytes) { m_outline.reserveTexts(bytes); }

    DocumentOutline take() && { return std::move(m_outline); }

    [[noreturn]] void refuse(char const* /*rule*/, std::string /*text*/) override { stop(); }
    void setDocumentLocator(xercesc::Locator const* locator) override { m_locator = locator; }

    void startElement(XMLCh const* /*uri*/, XMLCh const* /*localName*/, XMLCh const* name,
                      xercesc::Attributes const& attributes) override {
        OutlinedElement element;
        element.tag = I18NString(std::u16string_view(name));
        for (XMLSize_t index = 0; index < attributes.getLength(); ++index) {
            element.attributes.emplace_back(
                I18NString(std::u16string_view(attributes.getQName(index))),
                I18NString(std::u16string_view(attributes.getValue(index))));
        }
        element.position = positionOf(*m_locator);
        element.container = m_open.empty() ? OutlinedElement::None : m_open.back().number;
        m_open.push_back({m_outline.size(), {}});
        m_outline.add(element);
    }

    void endElement(XMLCh const* /*uri*/, XMLCh const* /*localName*/,
                    XMLCh const* /*name*/) override {
        std::u16string& text = m_open.back().text;
        while (!text.empty() && I18NCodePointIsWhitespace(text.back())) {
            text.pop_back();
        }
        m_outline.setText(m_open.back().number, text);
        m_open.pop_back();
    }

    void characters(XMLCh const* text, XMLSize_t length) override {
        std::u16string& all = m_open.back().text;
        std::u16string_view rest(text, length);
        while (all.empty() && !rest.empty() && I18NCodePointIsWhitespace(rest.front())) {
            rest.remove_prefix(1);
        }
        constexpr std::size_t enough = 200; // it is quoted, at most
        if (all.size() < enough) {
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

    struct Open {
        std::size_t number;
        std::u16string text;
    };

    xercesc::Locator const* m_locator = nullptr;
    DocumentOutline m_outline;
    std::vector<Open> m_open;
};

} // namespace

OutlinedElement DocumentOutline::operator[](std::size_t number) const {
    Element const& kept = m_elements[number];
    OutlinedElement element{
        .tag = textOf(kept.tag), .text = textOf(kept.text), .position = {kept.line, kept.column}};
    if (kept.container != noContainer) {
        element.container = kept.container;
    }
    std::size_t const first = number == 0 ? 0 : m_elements[number - 1].attributesEnd;
    for (std::size_t each = first; each < kept.attributesEnd; ++each) {
        element.attributes.emplace_back(textOf(m_attributes[each].name),
                                        textOf(m_attributes[each].value));
    }
    return element;
}

void DocumentOutline::add(OutlinedElement const& element) {
    for (auto const& [name, value] : element.attributes) {
        m_attributes.push_back({keep(name.view()), keep(value.view())});
    }
    m_elements.push_back({.tag = keep(element.tag.view()),
                          .text = keep(element.text.view()),
                          .attributesEnd = static_cast<std::uint32_t>(m_attributes.size()),
                          .container = element.container == OutlinedElement::None
                                           ? noContainer
                                           : static_cast<std::uint32_t>(element.container),
                          .line = static_cast<std::uint32_t>(element.position.line),
                          .column = static_cast<std::uint32_t>(element.position.column)});
}

void DocumentOutline::setText(std::size_t number, std::u16string_view text) {
    m_elements[number].text = keep(text);
}

DocumentOutline::Part DocumentOutline::keep(std::u16string_view text) {
    Part const part{static_cast<std::uint32_t>(m_texts.size()),
                    static_cast<std::uint32_t>(text.size())};
    m_texts += text;
    return part;
}

I18NString DocumentOutline::textOf(Part part) const {
    return I18NString(std::u16string_view(m_texts).substr(part.begin, part.length));
}

DocumentOutline outlineOf(std::string_view xml) {
    constexpr std::size_t longest = 1U << 31U; // so that 32 bits count its parts
    if (xml.empty() || xml.size() > longest) {
        return {};
    }
    OutlineReader reader(xml.size()); // no text is longer than what it is written with
    MemorySource source(xml);
    try {
        readSax(source, reader, DocumentLimits().attributesPerElement);
    } catch (KRLDocumentException const& /*problem*/) { // told by who read it before
    }
    return std::move(reader).take();
}

} // namespace vex
