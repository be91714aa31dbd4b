#include "KRLIDOM_Reader.h"

#include "KRLException.h"
#include "KRLIDOM_Guard.h"
#include "KRLIDOM_Platform.h"
#include "KRLIDOM_State.h"

#include <functional>
#include <unordered_set>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

namespace {

std::string tooMuch(std::string const& what, std::size_t found, std::size_t limit,
                    std::string const& advice) {
    return what + " (" + std::to_string(found) + "; at most " + std::to_string(limit) +
           " allowed). " + advice;
}

struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view name) const {
        return std::hash<std::u16string_view>{}(name);
    }
};

// Builds the document, and stops at the first fault or broken limit.
class LimitedParser final : public xercesc::XercesDOMParser {
public:
    LimitedParser(xercesc::MemoryManager* memory, std::string const& name,
                  KRLIDOM_ReadLimits const& limits, std::size_t& elements)
        : XercesDOMParser(nullptr, memory), m_name(name), m_limits(limits), m_elements(elements) {
        setValidationScheme(Val_Never);
        setDoNamespaces(false);
        setLoadExternalDTD(false);
        setDisableDefaultEntityResolution(true);
        setCreateEntityReferenceNodes(false);
        getScanner()->setErrorReporter(this);
    }

    void error(unsigned int, XMLCh const*, ErrTypes type, XMLCh const* problem, XMLCh const*,
               XMLCh const*, XMLFileLoc line, XMLFileLoc column) override {
        if (type != ErrType_Warning) {
            raise(line, column,
                  "The document is not well-formed: " + KRLIDOM::text(problem).toUtf8() +
                      ". Correct it here.");
        }
    }

    void doctypeDecl(xercesc::DTDElementDecl const&, XMLCh const*, XMLCh const*, bool,
                     bool) override {
        fail("The document has a document type (DOCTYPE), which is refused. Remove it.");
    }

    void startElement(xercesc::XMLElementDecl const& declaration, unsigned int uri,
                      XMLCh const* prefix, xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes,
                      XMLSize_t attributeCount, bool isEmpty, bool isRoot) override {
        if (++m_depth > m_limits.depth) {
            fail(tooMuch("Elements are nested too deep", m_depth, m_limits.depth, "Nest less."));
        }
        if (attributeCount > m_limits.attributesPerElement) {
            fail(tooMuch("An element has too many attributes", attributeCount,
                         m_limits.attributesPerElement, "Use fewer."));
        }
        checkName(declaration.getFullName());
        for (XMLSize_t i = 0; i < attributeCount; ++i) {
            checkName(attributes.elementAt(i)->getName());
        }
        ++m_elements;
        XercesDOMParser::startElement(declaration, uri, prefix, attributes, attributeCount, isEmpty,
                                      isRoot);
    }

    void endElement(xercesc::XMLElementDecl const& declaration, unsigned int uri, bool isRoot,
                    XMLCh const* prefix) override {
        --m_depth;
        XercesDOMParser::endElement(declaration, uri, isRoot, prefix);
    }

    // A marked section is text like any other.
    void docCharacters(XMLCh const* text, XMLSize_t length, bool) override {
        if (length != 0) {
            XercesDOMParser::docCharacters(text, length, false);
        }
    }

private:
    [[noreturn]] void fail(std::string const& problem) const {
        xercesc::Locator const* const at = getScanner()->getLocator();
        raise(at->getLineNumber(), at->getColumnNumber(), problem);
    }

    [[noreturn]] void raise(XMLFileLoc line, XMLFileLoc column, std::string const& problem) const {
        throw KRLDocumentException(m_name, static_cast<unsigned long>(line),
                                   static_cast<unsigned long>(column), problem);
    }

    void checkName(std::u16string_view name) {
        if (name.size() > m_limits.nameLength) {
            fail(tooMuch("A name is too long", name.size(), m_limits.nameLength, "Shorten it."));
        }
        if (m_names.find(name) != m_names.end()) {
            return;
        }
        if (m_names.size() == m_limits.distinctNames) {
            fail(tooMuch("There are too many distinct names", m_names.size() + 1,
                         m_limits.distinctNames, "Use fewer element and attribute names."));
        }
        m_names.emplace(name);
    }

    std::string const& m_name;
    KRLIDOM_ReadLimits const& m_limits;
    std::size_t& m_elements;
    std::size_t m_depth = 0;
    std::unordered_set<std::u16string, NameHash, std::equal_to<>> m_names;
};

void checkSize(std::string_view text, std::string const& name, KRLIDOM_ReadLimits const& limits) {
    if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) {
        throw KRLDocumentException(name, 1, 1,
                                   "The document is empty. Give an XML document with one root "
                                   "element.");
    }
    if (text.size() > limits.bytes) {
        throw KRLDocumentException(name, 0, 0,
                                   tooMuch("The document has too many bytes", text.size(),
                                           limits.bytes, "Send less, or raise the limit."));
    }
}

} // namespace

KRLIDOM_OwnedDocument KRLIDOM_Reader::parse(std::string_view text, std::string const& name,
                                            KRLIDOM_ReadLimits const& limits) {
    checkSize(text, name, limits);
    KRLIDOM_Initialize();
    auto state = std::make_unique<KRLIDOM_OwnedDocument::State>(KRLIDOM_Limits{});
    KRLIDOM::guarded([&] {
        LimitedParser parser(&state->memory, name, limits, state->budget.elements);
        xercesc::MemBufInputSource const source(reinterpret_cast<XMLByte const*>(text.data()),
                                                text.size(), u"document");
        parser.parse(source);
        state->own(parser.adoptDocument());
    });
    return KRLIDOM_OwnedDocument(std::move(state));
}
