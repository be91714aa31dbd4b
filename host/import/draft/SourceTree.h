#pragma once

#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// A source that is a tree of values, such as JSON or YAML: maps, lists and texts, each with
/// where it stands. Values are known by their number; the first one is the whole. Forty bytes
/// a value and the texts once.
class SourceTree {
public:
    using Value = std::uint32_t;
    static constexpr Value None = 0xFFFF'FFFF;

    /// Numbers, truth values and texts are scalars, with the text that they are written as.
    enum class Kind : std::uint8_t { Nothing, Scalar, Text, List, Map };

    /// Building, in the order of the source: a key stands before its value.
    /// @{
    void key(std::string_view name);
    void add(Kind kind, std::string_view text, DocumentPosition at);
    void open(Kind kind, DocumentPosition at);
    /// Gives the second of two entries of a map that have one key; `None` when there is none.
    Value close();
    std::size_t depth() const { return m_open.size(); }
    bool isInMap() const { return !m_open.empty() && kind(m_open.back().value) == Kind::Map; }
    /// @}

    std::size_t size() const { return m_values.size(); }
    bool isEmpty() const { return m_values.empty(); }

    Kind kind(Value value) const { return m_values[value].kind; }
    std::string_view keyOf(Value value) const;
    /// Of a scalar or a text; "" of anything else.
    std::string_view textOf(Value value) const;
    DocumentPosition positionOf(Value value) const;

    /// The first of what stands in a list or map, and what follows; `None` at the end.
    Value first(Value value) const { return m_values[value].first; }
    Value next(Value value) const { return m_values[value].next; }

    /// The entry of a map; `None` without one, and for what is no map.
    Value find(Value map, std::string_view key) const;

private:
    struct Entry {
        Kind kind;
        std::uint32_t keyStart = 0;
        std::uint32_t keyLength = 0;
        std::uint32_t textStart = 0;
        std::uint32_t textLength = 0;
        std::uint32_t line = 0;
        std::uint32_t column = 0;
        Value first = None;
        Value next = None;
    };
    struct Open {
        Value value;
        Value last = None; // of what stands in it
    };

    Value append(Kind kind, DocumentPosition at);

    std::vector<Entry> m_values;
    std::string m_texts;
    std::vector<Open> m_open;
    std::uint32_t m_keyStart = 0; // of the key that came last
    std::uint32_t m_keyLength = 0;
};

} // namespace vex
