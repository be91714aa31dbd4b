#pragma once

#include "KRLException.h"
#include "VexMessage.h"

#include <vector>

/// A failure of a plug-in's own, raised in three steps: build the message and
/// add its parameters, build the exception and add the message, call `raise`.
///
/// A failure of `VexMAActionPlugin` has one message, of the failure's own number; its
/// parameters are the failure's. Where a plug-in adds several, the parameters of all
/// count, in their order.
class VEX_PLATFORM_API VexException final : public KRLException {
public:
    /// A failure with that number. Its text is the table's until a message is added.
    explicit VexException(unsigned id);
    VexException(VexException const&) = default;
    ~VexException() override;

    /// Adds a message; `what` then gives the texts of all that were added.
    VexException& operator<<(VexMessage const& message);

    /// Records where the failure arose and throws a copy of this exception.
    /// `function` and `kind` are static texts; `kind` names the throwing macro
    /// of the calling code's convention ("KRL_THROW").
    [[noreturn]] void raise(KRLSourceLocation const& location, char const* function,
                            char const* kind);

    /// The failure's number.
    unsigned GetId() const { return m_id; }
    /// In the order in which they were added.
    std::vector<VexMessage> const& GetMessages() const { return m_messages; }
    /// @{
    /// What `raise` was given; empty before.
    KRLSourceLocation const& GetLocation() const { return m_location; }
    char const* GetFunction() const { return m_function; }
    char const* GetKind() const { return m_kind; }
    /// @}

private:
    unsigned m_id;
    std::vector<VexMessage> m_messages;
    KRLSourceLocation m_location{"", 0};
    char const* m_function = "";
    char const* m_kind = "";
};
