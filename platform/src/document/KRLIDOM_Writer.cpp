#include "KRLIDOM_Writer.h"

#include "KRLException.h"
#include "KRLIDOM_Platform.h"
#include "platform/src/document/KRLIDOM_Guard.h"

#include <memory>
#include <ostream>
#include <string_view>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/XMLFormatter.hpp>

namespace {

struct Release {
    template <class Resource> void operator()(Resource* resource) const { resource->release(); }
};

template <class Resource> using Released = std::unique_ptr<Resource, Release>;

// Where the written bytes go; `Sink` takes a pointer and a count.
template <class Sink> class Target final : public xercesc::XMLFormatTarget {
public:
    explicit Target(Sink sink) : m_sink(sink) {}

    void writeChars(XMLByte const* bytes, XMLSize_t count, xercesc::XMLFormatter*) override {
        std::string_view text(reinterpret_cast<char const*>(bytes), count);
        // Xerces-C begins an indented document with an empty line.
        if (m_atStart && !text.empty() && text.front() == '\n') {
            text.remove_prefix(1);
        }
        if (!text.empty()) {
            m_atStart = false;
            m_endsLine = text.back() == '\n';
            m_sink(text);
        }
    }

    void endLine() {
        if (!m_endsLine) {
            m_sink("\n");
        }
    }

private:
    Sink m_sink;
    bool m_atStart = true;
    bool m_endsLine = false;
};

void configure(xercesc::DOMConfiguration& configuration, bool pretty) {
    using xercesc::XMLUni;
    configuration.setParameter(XMLUni::fgDOMXMLDeclaration, false);
    configuration.setParameter(XMLUni::fgDOMWRTFormatPrettyPrint, pretty);
    // Xerces-C's own kind of indenting adds empty lines.
    configuration.setParameter(XMLUni::fgDOMWRTXercesPrettyPrint, false);
}

[[noreturn]] void raiseUnwritable(std::string const& reason) {
    throw KRLDocumentException("", 0, 0, "The document cannot be written as XML: " + reason);
}

void writeTo(xercesc::XMLFormatTarget& target, xercesc::DOMNode const* node, bool pretty) {
    auto* const implementation = xercesc::DOMImplementation::getImplementation();
    Released<xercesc::DOMLSSerializer> const serializer(implementation->createLSSerializer());
    Released<xercesc::DOMLSOutput> const output(implementation->createLSOutput());
    configure(*serializer->getDomConfig(), pretty);
    output->setEncoding(xercesc::XMLUni::fgUTF8EncodingString);
    output->setByteStream(&target);
    try {
        if (!serializer->write(node, output.get())) {
            raiseUnwritable("the encoding is not known");
        }
    } catch (xercesc::DOMLSException const& failure) {
        raiseUnwritable(KRLIDOM::text(failure.getMessage()).toUtf8());
    }
}

template <class Sink> void writeGuarded(Sink sink, KRLIDOM_Node const& node, bool pretty) {
    if (node.isNull()) {
        return;
    }
    KRLIDOM_Initialize();
    Target<Sink> target(sink);
    KRLIDOM::guarded([&] { writeTo(target, node.raw(), pretty); });
    if (pretty) {
        target.endLine();
    }
}

} // namespace

void KRLIDOM_Writer::write(std::ostream& out, KRLIDOM_Node const& node, bool pretty) {
    writeGuarded(
        [&out](std::string_view text) {
            out.write(text.data(), static_cast<std::streamsize>(text.size()));
        },
        node, pretty);
}

std::string KRLIDOM_Writer::toUtf8(KRLIDOM_Node const& node, bool pretty) {
    std::string utf8;
    writeGuarded([&utf8](std::string_view text) { utf8 += text; }, node, pretty);
    return utf8;
}
