#pragma once

#include "host/import/xml/FileText.h"
#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include <xercesc/sax2/DefaultHandler.hpp>

namespace vex {

/// Where the bytes of a document come from.
class ByteSource {
public:
    ByteSource(ByteSource const&) = delete;
    ByteSource& operator=(ByteSource const&) = delete;
    virtual ~ByteSource() = default;

    /// Puts up to `room` bytes into `target` and gives their number; 0 at the
    /// end. Raises `KRLDocumentException`.
    virtual std::size_t read(unsigned char* target, std::size_t room) = 0;

protected:
    ByteSource() = default;
};

class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::string_view text) : m_text(text) {}
    std::size_t read(unsigned char* target, std::size_t room) override;

private:
    std::string_view m_text;
};

/// Reads a file piece by piece, and raises `KRLDocumentException` once it is longer than
/// the limit.
class FileSource final : public ByteSource {
public:
    /// Raises `KRLDocumentException` when the file cannot be opened.
    FileSource(std::string const& path, InputLimit const& limit);
    ~FileSource() override;
    std::size_t read(unsigned char* target, std::size_t room) override;

    /// 0 when it is not known before the end.
    std::size_t size() const { return m_size; }

private:
    std::string m_path;
    InputLimit m_limit;
    int m_descriptor;
    std::size_t m_size = 0;
    std::size_t m_done = 0;
};

/// Where a locator or a parse error of the XML library points to. The library's
/// numbers are wider than ours on some machines.
template <typename Located> DocumentPosition positionOf(Located const& at) {
    return {static_cast<unsigned long>(at.getLineNumber()),
            static_cast<unsigned long>(at.getColumnNumber())};
}

/// Takes what a document holds, its errors and document types (`startDTD`, for every kind of
/// them).
class SaxHandler : public xercesc::DefaultHandler {
public:
    /// Ends the reading, by an exception: the document has too much of something for the XML
    /// library, where the locator stands. `rule` is a stable name, the text says what to do.
    [[noreturn]] virtual void refuse(char const* rule, std::string text) = 0;
    /// What to do about too many attributes.
    virtual std::string adviceOnAttributes() const { return "use fewer"; }
};

/// Reads XML. Nothing that the document names is opened. A tag with more attributes than
/// allowed is refused before many more were read ("too-many-attributes"), and so are element
/// names that were chosen to be slow to find ("too-many-like-names"): the work is in
/// proportion to the document. `bytesRead` is called with the number of bytes read so far,
/// before each piece but the first. Raises what the handler and the source raise, and
/// `std::bad_alloc`.
void readSax(ByteSource& source, SaxHandler& handler, std::size_t attributesPerElement,
             std::function<void(std::size_t bytesDone)> bytesRead = nullptr);

} // namespace vex
