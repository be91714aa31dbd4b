#include "host/import/xml/SaxDocument.h"

#include "KRLException.h"
#include "KRLIDOM_ParserLimits.h"
#include "KRLIDOM_Platform.h"
#include "host/store/image/Budget.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <new>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/internal/VecAttributesImpl.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>

namespace vex {

namespace {

using BytesRead = std::function<void(std::size_t)>; // called before each piece

class Stream final : public xercesc::BinInputStream {
public:
    Stream(ByteSource& source, std::string_view start, BytesRead const& bytesRead)
        : m_source(source), m_start(start), m_bytesRead(bytesRead) {}

    XMLFilePos curPos() const override { return m_done; }
    XMLCh const* getContentType() const override { return nullptr; }

    XMLSize_t readBytes(XMLByte* const target, XMLSize_t const room) override {
        Budget::checkCancelled();
        XMLSize_t count = m_start.copy(reinterpret_cast<char*>(target), room);
        m_start.remove_prefix(count);
        if (count == 0) {
            m_bytesRead(m_done);
            count = m_source.read(target, std::min<std::size_t>(room, KRLIDOM_BytesAtATime));
        }
        m_done += count;
        return count;
    }

private:
    ByteSource& m_source;
    std::string_view m_start;
    BytesRead const& m_bytesRead;
    std::size_t m_done = 0;
};

// Reads the start of the document itself: the parser needs enough of it at once
// to see the encoding, and loses memory when the first piece fails.
class Input final : public xercesc::InputSource {
public:
    Input(ByteSource& source, BytesRead const& bytesRead)
        : InputSource(u"document"), m_source(source), m_bytesRead(bytesRead) {
        std::size_t filled = 0;
        while (filled < m_start.size()) {
            std::size_t const count = source.read(m_start.data() + filled, m_start.size() - filled);
            if (count == 0) {
                break;
            }
            filled += count;
        }
        m_filled = filled;
    }
    xercesc::BinInputStream* makeStream() const override {
        return new Stream(m_source, {reinterpret_cast<char const*>(m_start.data()), m_filled},
                          m_bytesRead);
    }

private:
    static constexpr std::size_t StartSize = 4096;

    ByteSource& m_source;
    BytesRead const& m_bytesRead;
    std::array<unsigned char, StartSize> m_start;
    std::size_t m_filled = 0;
};

// Hands on what the library's scanner finds, and keeps the scanner's work in proportion.
class Reader final : public xercesc::SAXParser {
public:
    Reader(SaxHandler& handler, std::size_t attributesPerElement)
        : m_handler(handler), m_attributesPerElement(attributesPerElement) {
        setDoNamespaces(false);
        setDoSchema(false);
        setValidationScheme(Val_Never);
        setLoadExternalDTD(false);
        setDisableDefaultEntityResolution(true);
        setDocumentHandler(&m_nobody); // without one nothing is told of content
        setDTDHandler(&m_nobody);      // nor of document types
        setErrorHandler(&handler);
        handler.setDocumentLocator(getScanner().getLocator());
    }

    void checkTag() const { checkAttributes(KRLIDOM_AttributesSoFar(getScanner()), " or more"); }

    void startElement(xercesc::XMLElementDecl const& declaration, unsigned int, XMLCh const*,
                      xercesc::RefVectorOf<xercesc::XMLAttr> const& attributes,
                      XMLSize_t attributeCount, bool isEmpty, bool) override {
        checkAttributes(attributeCount, "");
        XMLCh const* const name = declaration.getFullName();
        if (declaration.getId() > m_names) { // numbered from 1 as they are met
            m_names = declaration.getId();
            checkName(name);
        }
        m_attributes.setVector(&attributes, attributeCount, &getScanner());
        m_handler.startElement(u"", u"", name, m_attributes);
        if (isEmpty) {
            m_handler.endElement(u"", u"", name);
        } else {
            ++m_depth;
        }
    }

    void endElement(xercesc::XMLElementDecl const& declaration, unsigned int, bool,
                    XMLCh const*) override {
        m_handler.endElement(u"", u"", declaration.getFullName());
        --m_depth;
    }

    void docCharacters(XMLCh const* text, XMLSize_t length, bool) override {
        if (m_depth != 0) {
            m_handler.characters(text, length);
        }
    }

    void ignorableWhitespace(XMLCh const*, XMLSize_t, bool) override {}

    void doctypeDecl(xercesc::DTDElementDecl const& root, XMLCh const* publicId,
                     XMLCh const* systemId, bool, bool) override {
        m_handler.startDTD(root.getFullName(), publicId, systemId);
    }

    // The library has no place for what goes wrong before the first line is
    // decoded.
    void error(unsigned int code, XMLCh const* domain, xercesc::XMLErrorReporter::ErrTypes type,
               XMLCh const* text, XMLCh const* systemId, XMLCh const* publicId, XMLFileLoc line,
               XMLFileLoc column) override {
        SAXParser::error(code, domain, type, text, systemId, publicId, line == 0 ? 1 : line,
                         column == 0 ? 1 : column);
    }

private:
    void checkAttributes(std::size_t count, char const* perhaps) const {
        if (count > m_attributesPerElement) {
            m_handler.refuse("too-many-attributes",
                             "the element has " + std::to_string(count) + " attributes" + perhaps +
                                 ", more than the " + std::to_string(m_attributesPerElement) +
                                 " allowed; " + m_handler.adviceOnAttributes());
        }
    }

    void checkName(XMLCh const* name) {
        if (!m_spread.add(name)) {
            m_handler.refuse("too-many-like-names",
                             "the names of more than " +
                                 std::to_string(KRLIDOM_NameSpread::MostInOnePlace) +
                                 " elements are so much alike that the XML library finds them "
                                 "slowly; name the elements otherwise");
        }
    }

    SaxHandler& m_handler;
    std::size_t m_attributesPerElement;
    xercesc::HandlerBase m_nobody;
    xercesc::VecAttributesImpl m_attributes;
    KRLIDOM_NameSpread m_spread;
    XMLSize_t m_names = 0; // that were met
    std::size_t m_depth = 0;
};

} // namespace

std::size_t MemorySource::read(unsigned char* target, std::size_t room) {
    std::size_t const count = std::min(room, m_text.size());
    std::memcpy(target, m_text.data(), count);
    m_text.remove_prefix(count);
    return count;
}

FileSource::FileSource(std::string const& path, InputLimit const& limit)
    : m_path(path), m_limit(limit), m_descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (m_descriptor < 0) {
        throw KRLDocumentException(path, 0, 0,
                                   std::string("cannot be opened: ") + std::strerror(errno));
    }
    struct stat status {};
    if (::fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        m_size = static_cast<std::size_t>(status.st_size);
    }
}

FileSource::~FileSource() {
    ::close(m_descriptor);
}

std::size_t FileSource::read(unsigned char* target, std::size_t room) {
    for (;;) {
        ssize_t const count = ::read(m_descriptor, target, room);
        if (count >= 0) {
            if (static_cast<std::size_t>(count) > m_limit.bytes - m_done) {
                throw KRLDocumentException(m_path, 0, 0, m_limit.problem());
            }
            m_done += static_cast<std::size_t>(count);
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            throw KRLDocumentException(m_path, 0, 0,
                                       std::string("cannot be read: ") + std::strerror(errno));
        }
    }
}

void readSax(ByteSource& source, SaxHandler& handler, std::size_t attributesPerElement,
             BytesRead bytesRead) {
    KRLIDOM_Initialize();
    try {
        Reader reader(handler, attributesPerElement);
        BytesRead const beforePiece = [&](std::size_t done) {
            reader.checkTag();
            if (bytesRead != nullptr) {
                bytesRead(done);
            }
        };
        reader.parse(Input(source, beforePiece));
    } catch (xercesc::OutOfMemoryException const&) {
        throw std::bad_alloc();
    }
}

} // namespace vex
