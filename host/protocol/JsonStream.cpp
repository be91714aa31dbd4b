#include "host/protocol/JsonStream.h"

#include <algorithm>
#include <string>

#include <nlohmann/json.hpp>

namespace vex {

void JsonStream::beginObject() {
    beginEntry();
    begin('{', '}');
}

void JsonStream::beginObject(std::string_view name) {
    beginMember(name);
    begin('{', '}');
}

void JsonStream::beginList(std::string_view name) {
    beginMember(name);
    begin('[', ']');
}

void JsonStream::end() {
    Level const level = m_levels.back();
    m_levels.pop_back();
    if (!level.isEmpty) {
        newLine();
    }
    m_out << level.closing;
}

void JsonStream::member(std::string_view name, Json const& value) {
    beginMember(name);
    write(value);
}

void JsonStream::entry(Json const& value) {
    beginEntry();
    write(value);
}

void JsonStream::begin(char opening, char closing) {
    m_out << opening;
    m_levels.push_back({closing});
}

void JsonStream::beginEntry() {
    if (m_levels.empty()) {
        return; // the whole text
    }
    m_out << (m_levels.back().isEmpty ? "" : ",");
    m_levels.back().isEmpty = false;
    newLine();
}

void JsonStream::beginMember(std::string_view name) {
    beginEntry();
    m_out << toText(Json(name), JsonForm::OneLine) << ": ";
}

void JsonStream::newLine() {
    constexpr std::size_t indent = 2;
    m_out << '\n';
    for (std::size_t count = indent * m_levels.size(); count != 0; --count) {
        m_out << ' ';
    }
}

void JsonStream::write(Json const& value) {
    std::string const text = toText(value, JsonForm::Indented);
    for (std::size_t at = 0; at < text.size();) { // texts in it hold no line breaks
        std::size_t const end = std::min(text.find('\n', at), text.size());
        m_out.write(text.data() + at, static_cast<std::streamsize>(end - at));
        if (end != text.size()) {
            newLine();
        }
        at = end + 1;
    }
}

} // namespace vex
