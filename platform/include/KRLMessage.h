#pragma once

#include "I18NString.h"

#include <string>
#include <utility>
#include <vector>

/// One parameter of a message.
class KRLMessageParm {
public:
    explicit KRLMessageParm(I18NString text) : m_text(std::move(text)) {}
    I18NString const& GetText() const { return m_text; }

private:
    I18NString m_text;
};

/// What a message is made of: its number and its parameters in order.
class KRLMessageComponents {
public:
    explicit KRLMessageComponents(unsigned id) : m_id(id) {}

    unsigned GetId() const { return m_id; }
    std::vector<KRLMessageParm> const& GetParameters() const { return m_parameters; }
    void AddParameter(KRLMessageParm parameter) { m_parameters.push_back(std::move(parameter)); }

private:
    unsigned m_id;
    std::vector<KRLMessageParm> m_parameters;
};
