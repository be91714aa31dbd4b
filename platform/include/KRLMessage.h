#pragma once

#include "I18NString.h"

#include <string>
#include <utility>
#include <vector>

/// One parameter of a message. A value: copies share nothing.
class KRLMessageParm {
public:
    /// @{
    /// A text as it is to stand in the message.
    explicit KRLMessageParm(I18NString text) : m_text(std::move(text)) {}
    I18NString const& GetText() const { return m_text; }
    /// @}

private:
    I18NString m_text;
};

/// What a message is made of: its number and its parameters in order. A value as well.
class KRLMessageComponents {
public:
    /// A message without parameters yet.
    explicit KRLMessageComponents(unsigned id) : m_id(id) {}

    /// The message's number.
    unsigned GetId() const { return m_id; }
    /// The first one stands for "{0}" in the text. Valid until one is added.
    std::vector<KRLMessageParm> const& GetParameters() const { return m_parameters; }
    /// Puts the parameter behind those that are there.
    void AddParameter(KRLMessageParm parameter) { m_parameters.push_back(std::move(parameter)); }

private:
    unsigned m_id;
    std::vector<KRLMessageParm> m_parameters;
};
