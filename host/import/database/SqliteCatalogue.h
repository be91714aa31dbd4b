#pragma once

#include "host/import/database/DatabaseModel.h"

namespace vex {

class ImportWork;
class OdbcConnection;

/// Reads tables, views, columns and keys of a file of SQLite. A query for each, whatever there
/// is of them. There are no roles in it.
void readSqliteCatalogue(OdbcConnection& connection, DatabaseModel& model, ImportWork& work);

} // namespace vex
