#pragma once

#include "KRLIDOM_OwnedDocument.h"
#include "platform/src/document/KRLIDOM_Memory.h"

#include <xercesc/dom/DOMDocument.hpp>

/// Counts the elements of a document; found again through the document's user
/// data.
struct KRLIDOM_Budget {
    std::size_t elements = 0;
    std::size_t limit = KRLIDOM_Limits::DefaultElements;
    char const* limitName = nullptr;
};

struct KRLIDOM_OwnedDocument::State {
    explicit State(KRLIDOM_Limits const& limits) : memory(limits.bytes, limits.bytesName) {
        budget.limit = limits.elements;
        budget.limitName = limits.elementsName;
    }
    State(State const&) = delete;
    State& operator=(State const&) = delete;
    // Not by the document's own `release`: that looks for handlers of user data
    // first, and takes memory for it.
    ~State() { delete document; }

    /// Takes a document that was made with `memory`.
    void own(xercesc::DOMDocument* made);

    KRLIDOM_Memory memory; // outlives the document
    KRLIDOM_Budget budget;
    xercesc::DOMDocument* document = nullptr;
};

namespace KRLIDOM {

/// The key of the budget in a document's user data.
inline constexpr char16_t budgetKey[] = u"KRLIDOM_Budget";

} // namespace KRLIDOM
