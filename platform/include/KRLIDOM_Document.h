#pragma once

#include "KRLIDOM_Element.h"
#include "KRLIDOM_Text.h"

struct KRLIDOM_Budget;

/// A document, or none. Makes new nodes, which belong to the document and have
/// no place in it until they are appended.
class VEX_PLATFORM_API KRLIDOM_Document : public KRLIDOM_Node {
public:
    KRLIDOM_Document() = default;
    /// The document that `node` belongs to, or is.
    explicit KRLIDOM_Document(KRLIDOM_Node const& node);

    /// The outermost element; null when there is none yet.
    KRLIDOM_Element getDocumentElement() const;

    /// Raises `KRLLimitException` when the document has as many elements as its
    /// owner allows, `KRLDocumentException` when `tag` is no XML name.
    KRLIDOM_Element createElement(I18NString const& tag) const;
    /// @{
    /// For an element that may never get a place: it is made at any time, and counts
    /// only when it is appended by `appendSpare`, which raises as `createElement` does
    /// and then appends nothing. Gives `spare`.
    KRLIDOM_Element createSpareElement(I18NString const& tag) const;
    KRLIDOM_Node appendSpare(KRLIDOM_Node const& parent, KRLIDOM_Element const& spare) const;
    /// @}
    /// Text needs no element, so the limit of elements does not matter.
    KRLIDOM_Text createTextNode(I18NString const& text) const;

private:
    void requireRoom() const;

    KRLIDOM_Budget* m_budget = nullptr; // the owner's; null when nothing is counted
};
