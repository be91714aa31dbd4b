#pragma once

#include "host/import/odbc/OdbcRow.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

class ConnectionString;

/// What all results of a connection may hold together.
struct OdbcLimits {
    std::size_t values;
    std::size_t bytes; // of texts
};

/// A connection to a database, in one transaction that changes nothing: it is rolled back at
/// the end. Its calls wait for the database on a thread of their own, so that the caller's
/// `Budget` ends them. Raises `OdbcException`, and `OdbcLimitException`. Not for several
/// threads.
class OdbcConnection {
public:
    OdbcConnection(ConnectionString const& how, OdbcLimits const& limits);
    OdbcConnection(OdbcConnection const&) = delete;
    OdbcConnection& operator=(OdbcConnection const&) = delete;
    ~OdbcConnection();

    /// As the driver says it: "PostgreSQL".
    std::string productName() const;

    /// Runs a statement without a result.
    void execute(std::string_view statement);

    /// All rows of a result. Each "?" of the statement stands for a parameter, which is a
    /// text; the types are those of the first columns.
    std::vector<OdbcRow> query(std::string_view statement, std::vector<OdbcType> const& types,
                               std::vector<std::string> const& parameters = {});

    /// Statements that were run so far.
    std::size_t statementsDone() const;

private:
    struct State;

    std::unique_ptr<State> m_state;
};

/// The names of the drivers that are installed, as connection strings name them.
std::vector<std::string> installedOdbcDrivers();

} // namespace vex
