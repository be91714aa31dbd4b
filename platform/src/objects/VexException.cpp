#include "VexException.h"

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
    m_location = location;
    m_function = function;
    m_kind = kind;
    throw VexException(*this);
}
