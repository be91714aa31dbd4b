#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// How a database is reached: "Driver=SQLite3;Database=shop.db", or the name of a data
/// source. Keywords are the same in either case; of several the first counts.
class ConnectionString {
public:
    /// Raises `OdbcException` for a text that is none; the message repeats nothing of it.
    explicit ConnectionString(std::string_view text);

    /// Nothing of a keyword that is missing.
    std::string const* find(std::string_view keyword) const;
    /// Adds a keyword at the end unless it is there.
    void addDefault(std::string_view keyword, std::string_view value);
    void setPassword(std::string_view password);
    bool hasPassword() const;

    /// For the driver manager: all of it.
    std::string text() const;
    /// For people: values that are known to be harmless, "..." for all others.
    std::string shown() const;
    /// A message of the driver with whatever may be secret replaced by "...".
    std::string withoutSecrets(std::string message) const;

private:
    struct Entry {
        std::string keyword{};
        std::string value{};
        bool isInBraces = false;
    };

    std::vector<Entry> m_entries;
};

} // namespace vex
