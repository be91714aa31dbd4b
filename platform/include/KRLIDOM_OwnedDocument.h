#pragma once

#include "KRLIDOM_Document.h"

#include <cstddef>
#include <memory>

/// How large a document may grow.
struct KRLIDOM_Limits {
    /// What an answer may hold when a host says nothing else.
    static constexpr std::size_t DefaultElements = 2'000'000;

    std::size_t elements = DefaultElements; ///< the root counts
    std::size_t bytes = 0;                  ///< of the document's memory; 0: no limit
    /// @{
    /// What people move the limit with, such as an option of the host's program: messages
    /// name it. Outlives the document; null for nothing that has a name.
    char const* elementsName = nullptr;
    char const* bytesName = nullptr;
    /// @}
};

/// Owns a document and its nodes, and counts what is put into it. Of the memory of a document
/// that is gone, up to four mebibytes serve the next ones of the thread that it went on
/// (`KRLIDOM_Reader::releaseParser` gives them back). Threads: one at a time.
class VEX_PLATFORM_API KRLIDOM_OwnedDocument {
public:
    /// An empty owner: its document is null.
    KRLIDOM_OwnedDocument();
    /// A document with one empty element. Raises as `KRLIDOM_Document::createElement` does.
    explicit KRLIDOM_OwnedDocument(I18NString const& rootTag, KRLIDOM_Limits const& limits = {});
    /// @{
    /// Leaves `other` an empty owner. Nodes of the document stay valid.
    KRLIDOM_OwnedDocument(KRLIDOM_OwnedDocument&& other) noexcept;
    KRLIDOM_OwnedDocument& operator=(KRLIDOM_OwnedDocument&& other) noexcept;
    /// @}
    ~KRLIDOM_OwnedDocument();

    /// The document; it and its nodes go with their owner.
    KRLIDOM_Document document() const;

    /// Elements made so far, the root counted.
    std::size_t elementCount() const;
    /// Bytes of memory that the document has taken.
    std::size_t byteCount() const;

    struct State;

private:
    friend class KRLIDOM_Reader;
    explicit KRLIDOM_OwnedDocument(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};
