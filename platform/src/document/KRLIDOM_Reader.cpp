#include "KRLIDOM_Reader.h"

#include "I18NHash.h"
#include "KRLException.h"
#include "KRLIDOM_ParserLimits.h"
#include "KRLIDOM_Platform.h"
#include "platform/src/document/KRLIDOM_Guard.h"
#include "platform/src/document/KRLIDOM_SpareBlocks.h"
#include "platform/src/document/KRLIDOM_State.h"
#include "platform/src/document/KRLIDOM_Version.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <unordered_set>
#include <utility>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

namespace {

std::string tooMuch(std::string const& what, std::size_t found, std::size_t limit,
                    std::string const& advice) {
    return what + " (" + std::to_string(found) + "; at most " + std::to_string(limit) +
           " allowed). " + advice;
}

using BeforePiece = std::function<void()>;

// A text in memory, handed over piece by piece.
class Pieces final : public xercesc::BinInputStream {
public:
    Pieces(std::string_view text, BeforePiece const& beforePiece)
        : m_text(text), m_beforePiece(beforePiece) {}

    XMLFilePos curPos() const override { return m_done; }
    XMLCh const* getContentType() const override { return nullptr; }

    XMLSize_t readBytes(XMLByte* const target, XMLSize_t const room) override {
        m_beforePiece();
        std::size_t const count = m_text.substr(m_done).copy(
            reinterpret_cast<char*>(target), std::min<std::size_t>(room, KRLIDOM_BytesAtATime));
        m_done += count;
        return count;
    }

private:
    std::string_view m_text;
    BeforePiece const& m_beforePiece;
    std::size_t m_done = 0;
};

class PiecesSource final : public xercesc::InputSource {
public:
    PiecesSource(std::string_view text, BeforePiece beforePiece)
        : InputSource(u"document"), m_text(text), m_beforePiece(std::move(beforePiece)) {}
    xercesc::BinInputStream* makeStream() const override {
        return new Pieces(m_text, m_beforePiece);
    }

private:
    std::string_view m_text;
    BeforePiece m_beforePiece;
};

// One document being read.
struct Reading {
    std::string const& name;
    KRLIDOM_ReadLimits const& limits;
    xercesc::MemoryManager* memory; // of the document
    std::size_t& elements;
    std::size_t depth = 0;
    std::unordered_set<std::u16string, I18NTextHasher, std::equal_to<>> names = {};
    KRLIDOM_NameSpread spread = {};
};

// Builds one document after the other, and stops at the first fault or broken limit.
class LimitedParser final : public xercesc::XercesDOMParser {
public:
    explicit LimitedParser(xercesc::MemoryManager* memory) : XercesDOMParser(nullptr, memory) {
        setValidationScheme(Val_Never);
        setDoNamespaces(false);
        setLoadExternalDTD(false);
        setDisableDefaultEntityResolution(true);
        setCreateEntityReferenceNodes(false);
        getScanner()->setErrorReporter(this);
    }

    xercesc::DOMDocument* read(std::string_view text, Reading& reading) {
        m_reading = &reading;
        // A document before may have been allowed more.
        std::size_t const most =
            std::max(KRLIDOM_AttributesSoFar(*getScanner()), reading.limits.attributesPerElement);
        parse(PiecesSource(text, [this, most] {
            std::size_t const attributes = KRLIDOM_AttributesSoFar(*getScanner());
            if (attributes > most) {
                failAttributes(attributes);
            }
        }));
        m_reading = nullptr;
        return adoptDocument();
    }

    // The document has memory of its own: it outlives this parser.
    void startDocument() override {
        struct Lent {
            xercesc::MemoryManager*& place;
            xercesc::MemoryManager* own;
            ~Lent() { place = own; }
        } const lent{fMemoryManager, std::exchange(fMemoryManager, m_reading->memory)};
        XercesDOMParser::startDocument();
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
        if (++m_reading->depth > m_reading->limits.depth) {
            fail(tooMuch("Elements are nested too deep", m_reading->depth, m_reading->limits.depth,
                         "Nest less."));
        }
        if (attributeCount > m_reading->limits.attributesPerElement) {
            failAttributes(attributeCount);
        }
        checkName(declaration.getFullName());
        for (XMLSize_t i = 0; i < attributeCount; ++i) {
            checkName(attributes.elementAt(i)->getName());
        }
        ++m_reading->elements;
        XercesDOMParser::startElement(declaration, uri, prefix, attributes, attributeCount, isEmpty,
                                      isRoot);
    }

    void endElement(xercesc::XMLElementDecl const& declaration, unsigned int uri, bool isRoot,
                    XMLCh const* prefix) override {
        --m_reading->depth;
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

    [[noreturn]] void failAttributes(std::size_t count) const {
        fail(tooMuch("An element has too many attributes", count,
                     m_reading->limits.attributesPerElement, "Use fewer."));
    }

    [[noreturn]] void raise(XMLFileLoc line, XMLFileLoc column, std::string const& problem) const {
        throw KRLDocumentException(m_reading->name, static_cast<unsigned long>(line),
                                   static_cast<unsigned long>(column), problem);
    }

    // The name ends with a zero.
    void checkName(std::u16string_view name) {
        if (name.size() > m_reading->limits.nameLength) {
            fail(tooMuch("A name is too long", name.size(), m_reading->limits.nameLength,
                         "Shorten it."));
        }
        if (m_reading->names.find(name) != m_reading->names.end()) {
            return;
        }
        if (m_reading->names.size() == m_reading->limits.distinctNames) {
            fail(tooMuch("There are too many distinct names", m_reading->names.size() + 1,
                         m_reading->limits.distinctNames,
                         "Use fewer element and attribute names."));
        }
        m_reading->names.emplace(name);
        if (!m_reading->spread.add(name.data())) {
            fail(tooMuch("Too many names are so much alike that the XML library finds them slowly",
                         KRLIDOM_NameSpread::MostInOnePlace + 1, KRLIDOM_NameSpread::MostInOnePlace,
                         "Use other names."));
        }
    }

    Reading* m_reading = nullptr;
};

// A parser and its memory. Making one takes longer than reading a small request,
// so each thread keeps the last one.
struct KeptParser {
    KRLIDOM_Memory memory{0}; // outlives the parser
    LimitedParser parser{&memory};
};

thread_local std::unique_ptr<KeptParser> keptParser;

// More than that stays in no thread: it comes from a document of unusual size.
constexpr std::size_t mostKept = 1U << 20U;

xercesc::DOMDocument* readDocument(std::string_view text, Reading& reading) {
    // It is kept again only after a success: the XML library drops blocks and leaves
    // its state as it is when it is left by an exception.
    std::unique_ptr<KeptParser> kept = std::move(keptParser);
    if (kept == nullptr) {
        kept = std::make_unique<KeptParser>();
    }
    xercesc::DOMDocument* const document = kept->parser.read(text, reading);
    // The parser would end lines as XML 1.1 does in the documents that follow, too.
    if (kept->memory.used() <= mostKept && !KRLIDOM::isVersion11(document)) {
        keptParser = std::move(kept);
    }
    return document;
}

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
        Reading reading{name, limits, &state->memory, state->budget.elements};
        state->own(readDocument(text, reading));
    });
    return KRLIDOM_OwnedDocument(std::move(state));
}

void KRLIDOM_Reader::releaseParser() noexcept {
    keptParser.reset();
    KRLIDOM_SpareBlocks::release();
}
