#include "host/import/draft/SourceTree.h"

#include <algorithm>

namespace vex {

void SourceTree::key(std::string_view name) {
    m_keyStart = static_cast<std::uint32_t>(m_texts.size());
    m_keyLength = static_cast<std::uint32_t>(name.size());
    m_texts += name;
}

SourceTree::Value SourceTree::append(Kind kind, DocumentPosition at) {
    auto const value = static_cast<Value>(m_values.size());
    Entry entry{.kind = kind};
    entry.line = static_cast<std::uint32_t>(at.line);
    entry.column = static_cast<std::uint32_t>(at.column);
    if (!m_open.empty()) {
        Open& owner = m_open.back();
        if (m_values[owner.value].kind == Kind::Map) {
            entry.keyStart = m_keyStart;
            entry.keyLength = m_keyLength;
        }
        (owner.last == None ? m_values[owner.value].first : m_values[owner.last].next) = value;
        owner.last = value;
    }
    m_values.push_back(entry);
    return value;
}

void SourceTree::add(Kind kind, std::string_view text, DocumentPosition at) {
    Value const value = append(kind, at);
    m_values[value].textStart = static_cast<std::uint32_t>(m_texts.size());
    m_values[value].textLength = static_cast<std::uint32_t>(text.size());
    m_texts += text;
}

void SourceTree::open(Kind kind, DocumentPosition at) {
    m_open.push_back({append(kind, at)});
}

SourceTree::Value SourceTree::close() {
    Value const closed = m_open.back().value;
    m_open.pop_back();
    if (m_values[closed].kind != Kind::Map) {
        return None;
    }
    std::vector<Value> entries;
    for (Value each = first(closed); each != None; each = next(each)) {
        entries.push_back(each);
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [&](Value a, Value b) { return keyOf(a) < keyOf(b); });
    auto const same = std::adjacent_find(entries.begin(), entries.end(),
                                         [&](Value a, Value b) { return keyOf(a) == keyOf(b); });
    return same == entries.end() ? None : *std::next(same);
}

std::string_view SourceTree::keyOf(Value value) const {
    Entry const& entry = m_values[value];
    return std::string_view(m_texts).substr(entry.keyStart, entry.keyLength);
}

std::string_view SourceTree::textOf(Value value) const {
    Entry const& entry = m_values[value];
    return std::string_view(m_texts).substr(entry.textStart, entry.textLength);
}

DocumentPosition SourceTree::positionOf(Value value) const {
    return {m_values[value].line, m_values[value].column};
}

SourceTree::Value SourceTree::find(Value map, std::string_view key) const {
    if (kind(map) != Kind::Map) {
        return None;
    }
    for (Value each = first(map); each != None; each = next(each)) {
        if (keyOf(each) == key) {
            return each;
        }
    }
    return None;
}

} // namespace vex
