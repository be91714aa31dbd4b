#include "host/protocol/JsonListText.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace vex {

namespace {
constexpr std::size_t indent = 2;
} // namespace

JsonListText::JsonListText(Json const& whole, std::string_view name, std::size_t depth)
    : m_depth(depth), m_text(toText(whole, JsonForm::Indented)) {
    std::string const empty = '"' + std::string(name) + "\": []";
    std::size_t const end = m_text.rfind(empty) + empty.size();
    m_rest = m_text.substr(end);
    m_text.resize(end - 1); // behind the bracket that opens
}

void JsonListText::add(Json const& entry) {
    std::string const newLine = '\n' + std::string(indent * (m_depth + 1), ' ');
    m_text += m_isEmpty ? "" : ",";
    m_text += newLine;
    m_isEmpty = false;
    std::string const text = toText(entry, JsonForm::Indented);
    for (std::size_t at = 0; at < text.size();) { // texts in it hold no line breaks
        std::size_t const end = std::min(text.find('\n', at), text.size());
        m_text.append(text, at, end - at);
        m_text += end == text.size() ? "" : newLine;
        at = end + 1;
    }
}

std::string JsonListText::finish() && {
    if (!m_isEmpty) {
        m_text += '\n' + std::string(indent * m_depth, ' ');
    }
    return std::move(m_text) + ']' + m_rest;
}

} // namespace vex
