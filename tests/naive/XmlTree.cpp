#include "tests/naive/XmlTree.h"

#include "tests/naive/ResponseDocument.h"

#include <stdexcept>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace naive {

namespace {

class TreeBuilder : public xercesc::DefaultHandler {
public:
    void startElement(const XMLCh*, const XMLCh*, const XMLCh* qname,
                      const xercesc::Attributes& attributes) override {
        auto element = std::make_unique<XmlElement>();
        element->name = qname;
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            element->attributes.emplace_back(attributes.getQName(i), attributes.getValue(i));
        }
        XmlElement* added = element.get();
        if (m_open.empty()) {
            m_root = std::move(element);
        } else {
            m_open.back()->children.push_back(std::move(element));
        }
        m_open.push_back(added);
    }

    void endElement(const XMLCh*, const XMLCh*, const XMLCh*) override { m_open.pop_back(); }

    void characters(const XMLCh* chars, XMLSize_t length) override {
        m_open.back()->text.append(chars, length);
    }

    void error(const xercesc::SAXParseException& problem) override { fatalError(problem); }

    void fatalError(const xercesc::SAXParseException& problem) override {
        throw std::runtime_error("not well-formed: " + toUtf8(problem.getMessage()));
    }

    std::unique_ptr<XmlElement> take() { return std::move(m_root); }

private:
    std::unique_ptr<XmlElement> m_root;
    std::vector<XmlElement*> m_open;
};

void appendElements(const XmlElement& from, ResponseElement& to) {
    for (const auto& [name, value] : from.attributes) {
        to.attributes[name] = value;
    }
    to.text = from.text;
    for (const auto& child : from.children) {
        auto copy = std::make_unique<ResponseElement>(child->name);
        appendElements(*child, *copy);
        to.children.push_back(std::move(copy));
    }
}

std::string escaped(const Text& value, bool attribute) {
    std::string result;
    for (const char unit : toUtf8(value)) {
        switch (unit) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += attribute ? "&quot;" : "\"";
            break;
        case '\t':
            result += attribute ? "&#9;" : "\t";
            break;
        case '\n':
            result += attribute ? "&#10;" : "\n";
            break;
        case '\r':
            result += "&#13;";
            break;
        default:
            result += unit;
        }
    }
    return result;
}

} // namespace

const Text* XmlElement::attribute(const Text& wanted) const {
    for (const auto& candidate : attributes) {
        if (candidate.first == wanted) {
            return &candidate.second;
        }
    }
    return nullptr;
}

std::unique_ptr<XmlElement> parseXml(const std::string& utf8) {
    // One for all texts: making a reader takes longer than reading a small text.
    static const std::unique_ptr<xercesc::SAX2XMLReader> reader = [] {
        xercesc::XMLPlatformUtils::Initialize();
        std::unique_ptr<xercesc::SAX2XMLReader> made(xercesc::XMLReaderFactory::createXMLReader());
        made->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, false);
        return made;
    }();
    TreeBuilder builder;
    reader->setContentHandler(&builder);
    reader->setErrorHandler(&builder);
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(utf8.data()),
                                            utf8.size(), "text");
    reader->parse(source);
    return builder.take();
}

std::string canonicalXml(const std::string& utf8) {
    const std::unique_ptr<XmlElement> root = parseXml(utf8);
    ResponseElement copy(root->name);
    appendElements(*root, copy);
    return copy.serialised();
}

std::string escapedAttribute(const Text& value) {
    return escaped(value, true);
}

std::string escapedContent(const Text& value) {
    return escaped(value, false);
}

} // namespace naive
