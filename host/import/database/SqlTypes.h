#pragma once

#include <string_view>

namespace vex {

/// @{
/// The word of a model for a type: of PostgreSQL by the name in its catalogue ("int4"), of
/// SQLite as it was declared ("VARCHAR(20)"). "" when there is none.
char const* datatypeOfPostgres(std::string_view type);
char const* datatypeOfSqlite(std::string_view declared);
/// @}

/// True for a datatype whose values can be added up.
bool isNumericDatatype(std::string_view datatype);

} // namespace vex
