#pragma once

namespace vex {

class ImportWork;

/// Reads a database over ODBC into a draft: tables as query subjects, columns as query items,
/// foreign keys as relationships, what roles may read as views.
void importDatabase(ImportWork& work);

} // namespace vex
