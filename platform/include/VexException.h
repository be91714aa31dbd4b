#pragma once

#include "KRLException.h"
#include "VexMessage.h"

#include <memory>
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

    /// Records where the failure arose and throws a copy of this exception. The texts,
    /// of which none is null, are copied: the exception may be read when the plug-in is
    /// unloaded. `kind` names the throwing macro of the calling code's convention
    /// ("KRL_THROW").
    [[noreturn]] void raise(KRLSourceLocation const& location, char const* function,
                            char const* kind);

    /// The failure's number.
    unsigned GetId() const { return m_id; }
    /// In the order in which they were added.
    std::vector<VexMessage> const& GetMessages() const { return m_messages; }
    /// @{
    /// What `raise` was given; empty before. Valid as long as this exception or a copy.
    KRLSourceLocation const& GetLocation() const;
    char const* GetFunction() const;
    char const* GetKind() const;
    /// @}

private:
    unsigned m_id;
    std::vector<VexMessage> m_messages;
    struct Origin;
    std::shared_ptr<Origin const> m_origin; // null before `raise`
};
