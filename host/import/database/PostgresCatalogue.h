#pragma once

#include "host/import/database/DatabaseModel.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace vex {

class ImportWork;
class OdbcConnection;

/// What the numbers of PostgreSQL's own catalogue stand for in the model read from it.
struct PostgresNumbers {
    /// The schemas that are imported, as an array of numbers: "{2200,16385}".
    std::string schemas;
    std::map<std::int64_t, std::size_t> tables;
    /// A column by the number of its table and its own.
    std::map<std::pair<std::int64_t, std::int64_t>, std::size_t> columns;
};

/// Reads schemas, tables, columns and keys. A query for each, whatever there is of them.
PostgresNumbers readPostgresCatalogue(OdbcConnection& connection, DatabaseModel& model,
                                      ImportWork& work);

/// Reads who may read what: it asks the server, so memberships, ownership, PUBLIC and the
/// right to use a schema count as they do there.
void readPostgresRoles(OdbcConnection& connection, PostgresNumbers const& numbers,
                       DatabaseModel& model, ImportWork& work);

} // namespace vex
