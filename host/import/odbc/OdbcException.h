#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace vex {

/// What a database, its driver or the driver manager refused. The text is for people, and
/// holds no secret of the connection.
class OdbcException final : public std::runtime_error {
public:
    explicit OdbcException(std::string const& text, std::string state = "")
        : std::runtime_error(text), m_state(std::move(state)) {}

    /// The five letters of the first diagnostic record, "IM002"; "" without one.
    std::string const& state() const { return m_state; }

private:
    std::string m_state;
};

/// What a database holds is more than a connection may take in.
class OdbcLimitException final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace vex
