#pragma once

#include "host/import/draft/ModelDraft.h"

#include <compare>
#include <cstddef>
#include <string>
#include <vector>

namespace vex {

/// What a database says of itself, whichever product it is. Things name each other by their
/// place in these lists; what was left out is in none of them. `object` is what stands for a
/// thing in the draft.

struct DatabaseColumn {
    std::string name;
    std::string sqlType{};     // as the database writes it
    char const* datatype = ""; // as a model calls it; "" when it has no word for it
    bool isNullable = true;
    bool isKey = false; // part of a primary or foreign key
    std::string comment{};
    std::size_t object = DraftObject::None;
};

struct DatabaseTable {
    std::size_t schema;
    std::string name;
    char const* kind = "table"; // as the account and the property `tableType` call it
    std::string comment{};
    std::vector<DatabaseColumn> columns{};
    /// The columns of the primary key and of each unique constraint.
    std::vector<std::vector<std::size_t>> keys{};
    std::size_t object = DraftObject::None;
};

struct DatabaseSchema {
    std::string name;
    std::string comment{};
    std::size_t object = DraftObject::None;
};

struct DatabaseForeignKey {
    std::size_t table;
    std::vector<std::size_t> columns;
    std::size_t target;
    std::vector<std::size_t> targetColumns;
    std::size_t object = DraftObject::None;
};

/// A column of a table.
struct DatabaseColumnPlace {
    std::size_t table;
    std::size_t column;
    friend auto operator<=>(DatabaseColumnPlace const&, DatabaseColumnPlace const&) = default;
};

/// Who may read what, whatever grants, memberships and ownership it comes from.
struct DatabaseRole {
    std::string name;
    std::string comment{};
    bool isEverybody = false; // PUBLIC
    bool canLogIn = false;
    bool mayConnect = true;               // to this database
    std::vector<std::size_t> inherited{}; // the roles whose privileges it has, through others too
    /// Tables that are read whole, by their place among those granted alike.
    std::vector<std::size_t> tablesGrantedAlike{};
    /// Columns of tables that are not read whole.
    std::vector<DatabaseColumnPlace> columns{};
};

struct DatabaseModel {
    std::vector<DatabaseSchema> schemas;
    std::vector<DatabaseTable> tables;
    std::vector<DatabaseForeignKey> foreignKeys;
    /// Tables that are granted alike, together: whoever reads one reads all of them.
    std::vector<std::vector<std::size_t>> tablesGrantedAlike;
    std::vector<DatabaseRole> roles;
};

} // namespace vex
