#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vex {

/// How a column of a result is read.
enum class OdbcType { Text, Number };

/// A row of a result: values of the types that were asked for, or null.
class OdbcRow {
public:
    using Value = std::variant<std::monostate, std::int64_t, std::string>;

    explicit OdbcRow(std::vector<Value> values) : m_values(std::move(values)) {}

    bool isNull(std::size_t column) const {
        return std::holds_alternative<std::monostate>(m_values[column]);
    }
    /// Of null: 0, and "".
    std::int64_t number(std::size_t column) const {
        return isNull(column) ? 0 : std::get<std::int64_t>(m_values[column]);
    }
    bool isTrue(std::size_t column) const { return number(column) != 0; }
    std::string const& text(std::size_t column) const {
        static std::string const none;
        return isNull(column) ? none : std::get<std::string>(m_values[column]);
    }

private:
    std::vector<Value> m_values;
};

} // namespace vex
