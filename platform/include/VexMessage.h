#pragma once

#include "KRLMessage.h"

/// A message of the platform: its text comes from the message table by number. A value.
class VEX_PLATFORM_API VexMessage {
public:
    /// The message with that number in the table.
    explicit VexMessage(unsigned id) : m_components(id) {}

    /// Adds a parameter: the first is "{0}" in the text.
    VexMessage& operator<<(KRLMessageParm const& parameter) {
        m_components.AddParameter(parameter);
        return *this;
    }

    /// @{
    /// What the message is made of.
    unsigned GetId() const { return m_components.GetId(); }
    KRLMessageComponents const& GetComponents() const { return m_components; }
    /// @}

    /// The text for people, in UTF-8, with the parameters in their places; when one is
    /// missing, the text that shows none. An unknown number gives a text that says so.
    std::string GetText() const;

private:
    KRLMessageComponents m_components;
};
