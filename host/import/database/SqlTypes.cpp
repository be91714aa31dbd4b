#include "host/import/database/SqlTypes.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>

namespace vex {

namespace {

struct SqlType {
    std::string_view name;
    char const* datatype;
};

constexpr SqlType postgresTypes[] = {
    {"int2", "int16"},
    {"int4", "int32"},
    {"int8", "int64"},
    {"numeric", "decimal"},
    {"money", "decimal"},
    {"float4", "float"},
    {"float8", "double"},
    {"bool", "boolean"},
    {"text", "string"},
    {"varchar", "string"},
    {"bpchar", "string"},
    {"char", "string"},
    {"name", "string"},
    {"citext", "string"},
    {"uuid", "string"},
    {"json", "string"},
    {"jsonb", "string"},
    {"xml", "string"},
    {"date", "date"},
    {"time", "time"},
    {"timetz", "time"},
    {"timestamp", "dateTime"},
    {"timestamptz", "dateTime"},
    {"bytea", "binary"},
};

// Whatever was declared a whole number may hold 64 bits. Dates and truth values are words
// only, which the rules below would take for numbers.
constexpr SqlType sqliteTypes[] = {
    {"boolean", "boolean"},   {"bool", "boolean"},       {"date", "date"},
    {"datetime", "dateTime"}, {"timestamp", "dateTime"}, {"time", "time"},
    {"decimal", "decimal"},   {"numeric", "decimal"},    {"number", "decimal"},
    {"money", "decimal"},     {"uuid", "string"},        {"json", "string"},
};

/// Parts of declared types, in the order in which SQLite looks for them.
constexpr SqlType sqliteParts[] = {
    {"int", "int64"},   {"char", "string"}, {"clob", "string"}, {"text", "string"},
    {"blob", "binary"}, {"real", "double"}, {"floa", "double"}, {"doub", "double"},
};

constexpr std::array<std::string_view, 6> numericDatatypes{"int16",   "int32", "int64",
                                                           "decimal", "float", "double"};

char const* find(std::span<SqlType const> types, std::string_view name) {
    auto const found = std::find_if(types.begin(), types.end(),
                                    [&](SqlType const& each) { return each.name == name; });
    return found == types.end() ? "" : found->datatype;
}

} // namespace

char const* datatypeOfPostgres(std::string_view type) {
    return find(postgresTypes, type);
}

char const* datatypeOfSqlite(std::string_view declared) {
    std::string name(declared.substr(0, declared.find('(')));
    name.erase(name.find_last_not_of(' ') + 1);
    for (char& unit : name) {
        unit = unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
    }
    char const* const known = find(sqliteTypes, name);
    if (*known != '\0') {
        return known;
    }
    auto const part =
        std::find_if(std::begin(sqliteParts), std::end(sqliteParts), [&](SqlType const& each) {
            return name.find(each.name) != std::string::npos;
        });
    return part == std::end(sqliteParts) ? "" : part->datatype;
}

bool isNumericDatatype(std::string_view datatype) {
    return std::find(numericDatatypes.begin(), numericDatatypes.end(), datatype) !=
           numericDatatypes.end();
}

} // namespace vex
