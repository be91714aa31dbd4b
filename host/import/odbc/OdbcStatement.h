#pragma once

#include "host/import/odbc/OdbcHandle.h"
#include "host/import/odbc/OdbcRow.h"

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// What is left of the limits of a connection.
struct OdbcAllowance {
    std::size_t values;
    std::size_t bytes;
};

/// A statement at work. For the sources of this folder.
class OdbcStatement {
public:
    /// `clean` takes secrets out of messages.
    OdbcStatement(OdbcHandle const& connection, OdbcAllowance& left,
                  std::function<std::string(std::string)> clean);

    void execute(std::string_view statement, std::vector<std::string> const& parameters);
    /// The rows that follow; ends early, with what there is, once the flag is set.
    std::vector<OdbcRow> fetch(std::vector<OdbcType> const& types,
                               std::atomic<bool> const& isEnded);
    /// From any thread: what the statement does ends with a failure.
    void cancel();

private:
    void check(SQLRETURN code, char const* step) const;
    OdbcRow::Value readNumber(SQLUSMALLINT column);
    OdbcRow::Value readText(SQLUSMALLINT column);
    void take(std::size_t& left, std::size_t count, char const* what) const;

    OdbcHandle m_handle;
    OdbcAllowance& m_left;
    std::function<std::string(std::string)> m_clean;
    std::vector<SQLWCHAR> m_piece;
};

} // namespace vex
