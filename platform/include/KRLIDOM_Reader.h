#pragma once

#include "KRLIDOM_OwnedDocument.h"

#include <string>
#include <string_view>

/// What a document from outside may hold. A document type is refused always:
/// no entity and no file or address named in a document is ever opened.
struct KRLIDOM_ReadLimits {
    std::size_t bytes = 1U << 20U;          ///< of the text
    std::size_t depth = 256;                ///< elements inside each other; the root counts
    std::size_t attributesPerElement = 200; ///< of any one element
    std::size_t nameLength = 1'000;         ///< of an element or attribute, in UTF-16 code units
    std::size_t distinctNames = 10'000;     ///< of elements and attributes together
};

/// Reads XML text into a document.
class VEX_PLATFORM_API KRLIDOM_Reader {
public:
    /// Reads `text`, whose XML declaration names its encoding (UTF-8 without).
    /// Raises `KRLDocumentException` with `name` as the file, the line and the
    /// column when the text is not well-formed or breaks a limit. Threads: any; each
    /// keeps a parser, of at most a mebibyte, for its next text.
    static KRLIDOM_OwnedDocument parse(std::string_view text, std::string const& name,
                                       KRLIDOM_ReadLimits const& limits = {});

    /// Gives back the parser that the calling thread keeps, and the memory that it keeps
    /// of documents for its next ones, at most four mebibytes; the next text makes a new
    /// parser. A thread's end does the same.
    static void releaseParser() noexcept;
};
