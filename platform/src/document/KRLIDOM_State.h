#pragma once

#include "KRLIDOM_OwnedDocument.h"
#include "platform/src/document/KRLIDOM_DocumentNames.h"
#include "platform/src/document/KRLIDOM_Memory.h"

#include <xercesc/dom/DOMDocument.hpp>

/// Counts what is put into a document; found again through the document's user
/// data.
struct KRLIDOM_Budget {
    std::size_t elements = 0;
    std::size_t limit = KRLIDOM_Limits::DefaultElements;
    char const* limitName = nullptr;
    KRLIDOM_DocumentNames names{};
};

struct KRLIDOM_OwnedDocument::State {
    explicit State(KRLIDOM_Limits const& limits) : memory(limits.bytes, limits.bytesName) {
        budget.limit = limits.elements;
        budget.limitName = limits.elementsName;
    }
    State(State const&) = delete;
    State& operator=(State const&) = delete;
    ~State();

    /// Takes a document that was made with `memory`.
    void own(xercesc::DOMDocument* made);

    KRLIDOM_Memory memory; // outlives the document
    KRLIDOM_Budget budget;
    xercesc::DOMDocument* document = nullptr;
};

namespace KRLIDOM {

/// The budget of a document that an owner has; null for another, and for none.
KRLIDOM_Budget* budgetOf(xercesc::DOMDocument* document);

} // namespace KRLIDOM
