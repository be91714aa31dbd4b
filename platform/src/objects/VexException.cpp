#include "VexException.h"

struct VexException::Origin {
    Origin(KRLSourceLocation const& at, char const* functionName, char const* kindName)
        : source(at.source), function(functionName),
          kind(kindName), location{source.c_str(), at.line} {}
    Origin(Origin const&) = delete;
    Origin& operator=(Origin const&) = delete;

    std::string const source;
    std::string const function;
    std::string const kind;
    KRLSourceLocation const location; // points into `source`
};

VexException::VexException(unsigned id) : KRLException(VexMessage(id).GetText()), m_id(id) {}

VexException::~VexException() = default;

VexException& VexException::operator<<(VexMessage const& message) {
    m_messages.push_back(message);
    std::string text;
    for (VexMessage const& each : m_messages) {
        if (!text.empty()) {
            text += ' ';
        }
        text += each.GetText();
    }
    SetText(std::move(text));
    return *this;
}

void VexException::raise(KRLSourceLocation const& location, char const* function,
                         char const* kind) {
    m_origin = std::make_shared<Origin const>(location, function, kind);
    throw VexException(*this);
}

KRLSourceLocation const& VexException::GetLocation() const {
    static constexpr KRLSourceLocation nowhere{"", 0};
    return m_origin == nullptr ? nowhere : m_origin->location;
}

char const* VexException::GetFunction() const {
    return m_origin == nullptr ? "" : m_origin->function.c_str();
}

char const* VexException::GetKind() const {
    return m_origin == nullptr ? "" : m_origin->kind.c_str();
}
