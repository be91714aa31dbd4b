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
    void startElement(XMLCh const*, XMLCh const*, XMLCh const* qname,
                      xercesc::Attributes const& attributes) override {
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

    void endElement(XMLCh const*, XMLCh const*, XMLCh const*) override { m_open.pop_back(); }

    void characters(XMLCh const* chars, XMLSize_t length) override {
        m_open.back()->text.append(chars, length);
    }

    void error(xercesc::SAXParseException const& problem) override { fatalError(problem); }

    void fatalError(xercesc::SAXParseException const& problem) override {
        throw std::runtime_error("not well-formed: " + toUtf8(problem.getMessage()));
    }

    std::unique_ptr<XmlElement> take() { return std::move(m_root); }

private:
    std::unique_ptr<XmlElement> m_root;
    std::vector<XmlElement*> m_open;
};

void appendElements(XmlElement const& from, ResponseElement& to) {
    for (auto const& [name, value] : from.attributes) {
        to.attributes[name] = value;
    }
    to.text = from.text;
    for (auto const& child : from.children) {
        auto copy = std::make_unique<ResponseElement>(child->name);
        appendElements(*child, *copy);
        to.children.push_back(std::move(copy));
    }
}

std::string escaped(Text const& value, bool attribute) {
    std::string result;
    for (char const unit : toUtf8(value)) {
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

Text const* XmlElement::attribute(Text const& wanted) const {
    for (auto const& candidate : attributes) {
        if (candidate.first == wanted) {
            return &candidate.second;
        }
    }
    return nullptr;
}

std::unique_ptr<XmlElement> parseXml(std::string const& utf8) {
    // One for all texts: making a reader takes longer than reading a small text.
    static std::unique_ptr<xercesc::SAX2XMLReader> const reader = [] {
        xercesc::XMLPlatformUtils::Initialize();
        std::unique_ptr<xercesc::SAX2XMLReader> made(xercesc::XMLReaderFactory::createXMLReader());
        made->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, false);
        return made;
    }();
    TreeBuilder builder;
    reader->setContentHandler(&builder);
    reader->setErrorHandler(&builder);
    xercesc::MemBufInputSource const source(reinterpret_cast<XMLByte const*>(utf8.data()),
                                            utf8.size(), "text");
    reader->parse(source);
    return builder.take();
}

std::string canonicalXml(std::string const& utf8) {
    std::unique_ptr<XmlElement> const root = parseXml(utf8);
    ResponseElement copy(root->name);
    appendElements(*root, copy);
    return copy.serialised();
}

std::string escapedAttribute(Text const& value) {
    return escaped(value, true);
}

std::string escapedContent(Text const& value) {
    return escaped(value, false);
}

} // namespace naive
