#include "host/import/draft/SourceEntries.h"

#include "host/import/draft/PlainText.h"

#include <algorithm>

namespace vex {

namespace {

constexpr char const* noText = "it is no text";
constexpr char const* noContent = "it is empty";
constexpr char const* unknown = "this import does not know it";

bool isPlain(SourceTree::Kind kind) {
    return kind == SourceTree::Kind::Text || kind == SourceTree::Kind::Scalar;
}

} // namespace

SourceEntries::SourceEntries(SourceTree const& tree, SourceTree::Value value, std::string_view kind,
                             ImportWork& work)
    : m_tree(tree), m_value(value), m_kind(kind), m_work(work) {
    if (m_tree.kind(value) != SourceTree::Kind::Map) {
        m_work.refuse("a " + m_kind + " is an object in braces; write one here",
                      m_tree.positionOf(value));
    }
}

std::string SourceEntries::kindOf(std::string_view key) const {
    return m_kind + '.' + std::string(key);
}

void SourceEntries::tellMapped(std::string_view key) {
    if (m_isTold) {
        m_work.account.mapped(kindOf(key));
    }
}

void SourceEntries::tellLeftOut(std::string_view key, char const* reason, SourceTree::Value value) {
    if (m_isTold) {
        m_work.account.leftOut(kindOf(key), reason, {"", m_tree.positionOf(value)});
    }
}

SourceTree::Value SourceEntries::take(std::string_view key) {
    SourceTree::Value const value = m_tree.find(m_value, key);
    if (value != SourceTree::None) {
        m_taken.push_back(value);
    }
    return value;
}

std::optional<std::string> SourceEntries::textOf(SourceTree::Value value) const {
    if (isPlain(m_tree.kind(value))) {
        return std::string(m_tree.textOf(value));
    }
    if (m_tree.kind(value) != SourceTree::Kind::List) {
        return std::nullopt;
    }
    std::string text;
    for (auto line = m_tree.first(value); line != SourceTree::None; line = m_tree.next(line)) {
        if (!isPlain(m_tree.kind(line))) {
            return std::nullopt;
        }
        text.append(line == m_tree.first(value) ? "" : "\n").append(m_tree.textOf(line));
    }
    return text;
}

std::optional<std::string> SourceEntries::text(std::string_view key) {
    SourceTree::Value const value = take(key);
    if (value == SourceTree::None) {
        return std::nullopt;
    }
    auto found = textOf(value);
    if (!found.has_value() || found->empty()) {
        tellLeftOut(key, found.has_value() ? noContent : noText, value);
        return std::nullopt;
    }
    tellMapped(key);
    return found;
}

std::string SourceEntries::plainText(std::string_view key) {
    SourceTree::Value const value = take(key);
    return value == SourceTree::None ? "" : textOf(value).value_or("");
}

std::string SourceEntries::name(std::string_view key) {
    SourceTree::Value const value = take(key);
    std::string name;
    if (value != SourceTree::None && isPlain(m_tree.kind(value))) {
        name = trimmed(m_tree.textOf(value));
    }
    if (name.empty()) {
        m_work.refuse("the " + m_kind + " has no " + quotedText(key) + "; give it one",
                      value == SourceTree::None ? position() : m_tree.positionOf(value));
    }
    tellMapped(key);
    return name;
}

bool SourceEntries::isTrue(std::string_view key) {
    auto const said = text(key);
    return said.has_value() && foldedCase(*said) == u"true";
}

std::vector<SourceTree::Value> SourceEntries::list(std::string_view key) {
    std::vector<SourceTree::Value> found;
    SourceTree::Value const value = take(key);
    if (value == SourceTree::None || m_tree.kind(value) == SourceTree::Kind::Nothing) {
        return found;
    }
    if (m_tree.kind(value) != SourceTree::Kind::List) {
        m_work.refuse(quotedText(key) + " of a " + m_kind +
                          " is a list in brackets; write one here",
                      m_tree.positionOf(value));
    }
    for (auto each = m_tree.first(value); each != SourceTree::None; each = m_tree.next(each)) {
        found.push_back(each);
    }
    return found;
}

SourceTree::Value SourceEntries::map(std::string_view key) {
    SourceTree::Value const value = take(key);
    if (value == SourceTree::None || m_tree.kind(value) == SourceTree::Kind::Nothing) {
        return SourceTree::None;
    }
    if (m_tree.kind(value) != SourceTree::Kind::Map) {
        m_work.refuse(quotedText(key) + " of a " + m_kind +
                          " is an object in braces; write one here",
                      m_tree.positionOf(value));
    }
    return value;
}

void SourceEntries::leaveOutRest(std::span<UnmappedKey const> table, std::string_view nameOfThing) {
    if (!m_isTold) {
        return;
    }
    std::sort(m_taken.begin(), m_taken.end());
    for (auto each = m_tree.first(m_value); each != SourceTree::None; each = m_tree.next(each)) {
        if (std::binary_search(m_taken.begin(), m_taken.end(), each)) {
            continue;
        }
        std::string_view const key = m_tree.keyOf(each);
        auto const row = std::find_if(table.begin(), table.end(), [&](UnmappedKey const& known) {
            return known.key == key && (known.kind == m_kind || known.kind.empty());
        });
        if (row == table.end()) {
            m_work.account.leftOut(kindOf(key), unknown,
                                   {std::string(nameOfThing), m_tree.positionOf(each)});
        } else if (row->entries.empty() || m_tree.kind(each) != SourceTree::Kind::List) {
            m_work.account.leftOut(row->entries.empty() ? kindOf(key) : std::string(row->entries),
                                   row->reason,
                                   {std::string(nameOfThing), m_tree.positionOf(each)});
        } else {
            for (auto entry = m_tree.first(each); entry != SourceTree::None;
                 entry = m_tree.next(entry)) {
                SourceTree::Value const name = m_tree.find(entry, "name");
                m_work.account.leftOut(
                    row->entries, row->reason,
                    {std::string(name == SourceTree::None ? nameOfThing : m_tree.textOf(name)),
                     m_tree.positionOf(entry)});
            }
        }
    }
}

} // namespace vex
