#include "KRLIDOM_OwnedDocument.h"

#include "KRLIDOM_Platform.h"
#include "platform/src/document/KRLIDOM_Guard.h"
#include "platform/src/document/KRLIDOM_LeanDocument.h"
#include "platform/src/document/KRLIDOM_State.h"

#include <atomic>

namespace {

constexpr char16_t budgetKey[] = u"KRLIDOM_Budget";

std::atomic<std::size_t> documentsGone{0};

} // namespace

KRLIDOM_OwnedDocument::KRLIDOM_OwnedDocument() = default;

KRLIDOM_OwnedDocument::KRLIDOM_OwnedDocument(I18NString const& rootTag,
                                             KRLIDOM_Limits const& limits) {
    KRLIDOM_Initialize();
    auto state = std::make_unique<State>(limits);
    KRLIDOM::guarded(
        [&] { state->own(new (&state->memory) KRLIDOM_LeanDocument(&state->memory)); });
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
    document->setUserData(budgetKey, &budget, nullptr);
}

// Not by the document's own `release`: that looks for handlers of user data
// first, and takes memory for it.
KRLIDOM_OwnedDocument::State::~State() {
    documentsGone.fetch_add(1, std::memory_order_relaxed); // before the next one can lie there
    delete document;
}

// Each attribute that is set asks for it, and the library searches through two tables.
KRLIDOM_Budget* KRLIDOM::budgetOf(xercesc::DOMDocument* document) {
    struct Found {
        xercesc::DOMDocument* document;
        KRLIDOM_Budget* budget;
        std::size_t documentsGone;
    };
    static constinit thread_local Found last{nullptr, nullptr, 0};
    // Another document may lie where one was.
    std::size_t const gone = documentsGone.load(std::memory_order_relaxed);
    if (document == nullptr || (document == last.document && gone == last.documentsGone)) {
        return document == nullptr ? nullptr : last.budget;
    }
    auto* const budget = static_cast<KRLIDOM_Budget*>(document->getUserData(budgetKey));
    if (budget != nullptr) { // others go without a word
        last = {document, budget, gone};
    }
    return budget;
}
