#include "host/import/xml/SaxDocument.h"

#include "KRLException.h"
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
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>

namespace vex {

namespace {

using BytesRead = std::function<void(std::size_t)>;

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
            if (m_bytesRead != nullptr) {
                m_bytesRead(m_done);
            }
            count = m_source.read(target, room);
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

// The library tells a handler only of document types that declare something.
class Reader final : public xercesc::SAX2XMLReaderImpl {
public:
    explicit Reader(xercesc::DefaultHandler& handler) : m_handler(handler) {
        setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, false);
        setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
        setFeature(xercesc::XMLUni::fgXercesSchema, false);
        setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
        setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
        setContentHandler(&handler);
        setErrorHandler(&handler);
        setLexicalHandler(&handler); // without one nothing is told of document types
    }

    void doctypeDecl(xercesc::DTDElementDecl const& root, XMLCh const* publicId,
                     XMLCh const* systemId, bool, bool) override {
        m_handler.startDTD(root.getFullName(), publicId, systemId);
    }

    // The library has no place for what goes wrong before the first line is
    // decoded.
    void error(unsigned int code, XMLCh const* domain, ErrTypes type, XMLCh const* text,
               XMLCh const* systemId, XMLCh const* publicId, XMLFileLoc line,
               XMLFileLoc column) override {
        SAX2XMLReaderImpl::error(code, domain, type, text, systemId, publicId, line == 0 ? 1 : line,
                                 column == 0 ? 1 : column);
    }

private:
    xercesc::DefaultHandler& m_handler;
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

void readSax(ByteSource& source, xercesc::DefaultHandler& handler, BytesRead bytesRead) {
    KRLIDOM_Initialize();
    try {
        Reader reader(handler);
        reader.parse(Input(source, bytesRead));
    } catch (xercesc::OutOfMemoryException const&) {
        throw std::bad_alloc();
    }
}

} // namespace vex
