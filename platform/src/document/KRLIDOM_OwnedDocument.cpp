#include "KRLIDOM_OwnedDocument.h"

#include "KRLIDOM_Platform.h"
#include "platform/src/document/KRLIDOM_Guard.h"
#include "platform/src/document/KRLIDOM_State.h"

#include <xercesc/dom/DOMImplementation.hpp>

KRLIDOM_OwnedDocument::KRLIDOM_OwnedDocument() = default;

KRLIDOM_OwnedDocument::KRLIDOM_OwnedDocument(I18NString const& rootTag,
                                             KRLIDOM_Limits const& limits) {
    KRLIDOM_Initialize();
    auto state = std::make_unique<State>(limits);
    KRLIDOM::guarded([&] {
        state->own(xercesc::DOMImplementation::getImplementation()->createDocument(&state->memory));
    });
    KRLIDOM_Document const document{KRLIDOM_Node(state->document)};
    document.appendChild(document.createElement(rootTag));
    m_state = std::move(state);
}

KRLIDOM_OwnedDocument::KRLIDOM_OwnedDocument(std::unique_ptr<State> state)
    : m_state(std::move(state)) {}

KRLIDOM_OwnedDocument::KRLIDOM_OwnedDocument(KRLIDOM_OwnedDocument&& other) noexcept = default;
KRLIDOM_OwnedDocument&
KRLIDOM_OwnedDocument::operator=(KRLIDOM_OwnedDocument&& other) noexcept = default;
KRLIDOM_OwnedDocument::~KRLIDOM_OwnedDocument() = default;

KRLIDOM_Document KRLIDOM_OwnedDocument::document() const {
    return m_state == nullptr ? KRLIDOM_Document()
                              : KRLIDOM_Document(KRLIDOM_Node(m_state->document));
}

std::size_t KRLIDOM_OwnedDocument::elementCount() const {
    return m_state == nullptr ? 0 : m_state->budget.elements;
}

std::size_t KRLIDOM_OwnedDocument::byteCount() const {
    return m_state == nullptr ? 0 : m_state->memory.used();
}

void KRLIDOM_OwnedDocument::State::own(xercesc::DOMDocument* made) {
    document = made;
    document->setUserData(KRLIDOM::budgetKey, &budget, nullptr);
}
