#include "host/import/database/SqliteCatalogue.h"

#include "host/import/database/DatabaseFilter.h"
#include "host/import/database/DatabaseReasons.h"
#include "host/import/database/SqlTypes.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/odbc/OdbcConnection.h"
#include "host/import/odbc/OdbcException.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace vex {

namespace {

constexpr OdbcType Text = OdbcType::Text;
constexpr OdbcType Number = OdbcType::Number;

constexpr char const* spaceName = "main"; // what SQLite calls the file that was opened

// The catalogue lists itself, too.
constexpr char const* tablesQuery = R"(
SELECT name, type, wr FROM pragma_table_list
WHERE schema = 'main' AND name <> 'sqlite_schema' ORDER BY name)";

constexpr char const* columnsQuery = R"(
SELECT t.name, x.name, x.type, x."notnull", x.pk, x.hidden, x.dflt_value IS NOT NULL
FROM pragma_table_list t, pragma_table_xinfo(t.name, 'main') x
WHERE t.schema = 'main' ORDER BY t.name, x.cid)";

constexpr char const* columnsOfTableQuery = R"(
SELECT ?, x.name, x.type, x."notnull", x.pk, x.hidden, x.dflt_value IS NOT NULL
FROM pragma_table_xinfo(?, 'main') x ORDER BY x.cid)";

constexpr char const* uniqueKeysQuery = R"(
SELECT t.name, l.name, coalesce(i.name, '')
FROM pragma_table_list t, pragma_index_list(t.name, 'main') l,
     pragma_index_info(l.name, 'main') i
WHERE t.schema = 'main' AND t.type = 'table' AND l."unique" AND NOT l.partial
  AND l.origin <> 'pk'
ORDER BY t.name, l.name, i.seqno)";

// The last one that was declared has the number 0.
constexpr char const* foreignKeysQuery = R"(
SELECT t.name, f.id, f."table", f."from", coalesce(f."to", '')
FROM pragma_table_list t, pragma_foreign_key_list(t.name, 'main') f
WHERE t.schema = 'main' AND t.type = 'table' ORDER BY t.name, f.id DESC, f.seq)";

constexpr char const* othersQuery = R"(
SELECT type, count(*), min(name) FROM sqlite_schema
WHERE type IN ('index', 'trigger') AND name NOT LIKE 'sqlite\_%' ESCAPE '\'
GROUP BY type ORDER BY type)";

/// Names of tables and columns are the same in either case of the letters of ASCII.
std::string folded(std::string name) {
    for (char& unit : name) {
        unit = unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
    }
    return name;
}

class SqliteReader {
public:
    SqliteReader(OdbcConnection& connection, DatabaseModel& model, ImportWork& work)
        : m_connection(connection), m_model(model), m_work(work), m_filter(work) {}

    void read() {
        if (!m_filter.wantsSchema(spaceName)) {
            m_work.account.leftOut("schema", databaseReasons::Schema, {spaceName});
        } else {
            m_model.schemas.push_back({spaceName});
            readTables();
        }
        m_filter.tellUnmatched();
        readColumns();
        for (DatabaseTable& table : m_model.tables) {
            settlePrimaryKey(table);
        }
        readUniqueKeys();
        readForeignKeys();
        tellOthers();
    }

private:
    void readTables() {
        for (OdbcRow const& row : m_connection.query(tablesQuery, {Text, Text, Number})) {
            readTable(row.text(0), row.text(1), row.isTrue(2));
        }
    }

    void readTable(std::string const& name, std::string const& type, bool isWithoutRowid) {
        bool const isVirtual = type == "virtual";
        char const* const kind = type == "view" ? "view" : isVirtual ? "virtual table" : "table";
        char const* reason = nullptr;
        if (type == "shadow" || folded(name).starts_with("sqlite_")) {
            reason = databaseReasons::System;
        } else if (char const* const against = databaseReasons::againstName(name)) {
            reason = against;
        } else if (!m_filter.wantsTable(spaceName, name)) {
            reason = databaseReasons::Filter;
        }
        if (reason != nullptr) {
            m_work.account.leftOut(kind, reason, {name});
            return;
        }
        m_work.account.mapped(kind);
        if (type == "view") {
            m_work.account.leftOut("view.definition", databaseReasons::Definition, {name});
        }
        m_tables.emplace(folded(name), m_model.tables.size());
        if (isWithoutRowid) {
            m_withoutRowid.insert(m_model.tables.size());
        }
        m_model.tables.push_back({.schema = 0, .name = name, .kind = kind});
    }

    void readColumns() {
        std::vector<OdbcType> const types{Text, Text, Text, Number, Number, Number, Number};
        std::vector<OdbcRow> rows;
        try {
            rows = m_connection.query(columnsQuery, types);
        } catch (OdbcException const&) {
            readColumnsOneByOne(types); // a view that cannot be read any more
            return;
        }
        addColumns(rows);
    }

    void readColumnsOneByOne(std::vector<OdbcType> const& types) {
        for (DatabaseTable const& table : m_model.tables) {
            try {
                addColumns(
                    m_connection.query(columnsOfTableQuery, types, {table.name, table.name}));
            } catch (OdbcException const& problem) {
                m_work.account.note(std::string("the columns of the ") + table.kind + " \"" +
                                    table.name + "\" are not known: " + problem.what());
            }
        }
    }

    void addColumns(std::vector<OdbcRow> const& rows) {
        constexpr std::int64_t hiddenOfModule = 1;
        for (OdbcRow const& row : rows) {
            auto const table = m_tables.find(folded(row.text(0)));
            if (table == m_tables.end()) {
                continue;
            }
            std::string const& name = row.text(1);
            char const* const reason = row.number(5) == hiddenOfModule
                                           ? databaseReasons::System
                                           : databaseReasons::againstName(name);
            if (reason != nullptr) {
                m_work.account.leftOut("column", reason, {row.text(0) + '.' + name});
                continue;
            }
            if (row.isTrue(6)) {
                m_work.account.leftOut("column.default",
                                       "nothing in a model says what values may be",
                                       {row.text(0) + '.' + name});
            }
            auto& columns = m_model.tables[table->second].columns;
            if (row.number(4) > 0) {
                m_primaryKeys[table->second].emplace(row.number(4), columns.size());
            }
            columns.push_back(
                {.name = name,
                 .sqlType = databaseReasons::isWritable(row.text(2)) ? row.text(2) : "",
                 .datatype = datatypeOfSqlite(row.text(2)),
                 .isNullable = !row.isTrue(3)});
        }
    }

    // A primary key holds nulls here, unless it is the number of the row itself.
    void settlePrimaryKey(DatabaseTable& table) {
        auto const number = static_cast<std::size_t>(&table - m_model.tables.data());
        auto const known = m_primaryKeys.find(number);
        if (known == m_primaryKeys.end()) {
            return;
        }
        std::vector<std::size_t> key;
        for (auto const& [place, column] : known->second) {
            key.push_back(column);
        }
        bool const isRowid = key.size() == 1 && folded(table.columns[key[0]].sqlType) == "integer";
        for (std::size_t const column : key) {
            table.columns[column].isKey = true;
            if (isRowid || m_withoutRowid.contains(number)) {
                table.columns[column].isNullable = false;
            }
        }
        m_work.account.mapped("primary key");
        table.keys.push_back(std::move(key));
    }

    std::optional<std::size_t> columnOf(std::size_t table, std::string const& name) const {
        auto const& columns = m_model.tables[table].columns;
        auto const found =
            std::find_if(columns.begin(), columns.end(), [&](DatabaseColumn const& each) {
                return folded(each.name) == folded(name);
            });
        return found == columns.end()
                   ? std::nullopt
                   : std::optional(static_cast<std::size_t>(found - columns.begin()));
    }

    void readUniqueKeys() {
        std::map<std::pair<std::size_t, std::string>, std::vector<std::size_t>> keys;
        std::set<std::pair<std::size_t, std::string>> ofExpressions;
        for (OdbcRow const& row : m_connection.query(uniqueKeysQuery, {Text, Text, Text})) {
            auto const table = m_tables.find(folded(row.text(0)));
            if (table == m_tables.end()) {
                continue;
            }
            std::pair const index(table->second, row.text(1));
            if (auto const column = columnOf(table->second, row.text(2))) {
                keys[index].push_back(*column);
            } else {
                ofExpressions.insert(index);
            }
        }
        for (auto& [index, columns] : keys) {
            if (!ofExpressions.contains(index)) {
                m_work.account.mapped("unique key");
                m_model.tables[index.first].keys.push_back(std::move(columns));
            }
        }
    }

    void readForeignKeys() {
        auto const rows = m_connection.query(foreignKeysQuery, {Text, Number, Text, Text, Text});
        for (std::size_t first = 0; first < rows.size();) {
            std::size_t end = first;
            while (end < rows.size() && rows[end].text(0) == rows[first].text(0) &&
                   rows[end].number(1) == rows[first].number(1)) {
                ++end;
            }
            readForeignKey(rows, first, end);
            first = end;
        }
    }

    /// Rows of one foreign key, a column each.
    void readForeignKey(std::vector<OdbcRow> const& rows, std::size_t first, std::size_t end) {
        auto const table = m_tables.find(folded(rows[first].text(0)));
        if (table == m_tables.end()) {
            return; // of a table that is told of already
        }
        auto const target = m_tables.find(folded(rows[first].text(2)));
        std::vector<std::size_t> columns;
        std::vector<std::size_t> targetColumns;
        for (std::size_t number = first; number < end; ++number) {
            if (auto const column = columnOf(table->second, rows[number].text(3))) {
                m_model.tables[table->second].columns[*column].isKey = true;
                columns.push_back(*column);
            }
            auto const targetColumn =
                target == m_tables.end()
                    ? std::nullopt
                    : targetColumnOf(target->second, rows[number].text(4), number - first);
            if (targetColumn.has_value()) {
                targetColumns.push_back(*targetColumn);
            }
        }
        if (columns.size() != end - first || targetColumns.size() != end - first) {
            m_work.account.leftOut("foreign key", databaseReasons::Target,
                                   {rows[first].text(0) + ": " + rows[first].text(2)});
            return;
        }
        m_work.account.mapped("foreign key");
        m_model.foreignKeys.push_back(
            {table->second, std::move(columns), target->second, std::move(targetColumns)});
    }

    /// Where no column is named, it is that of the primary key in this place.
    std::optional<std::size_t> targetColumnOf(std::size_t table, std::string const& name,
                                              std::size_t place) const {
        if (!name.empty()) {
            return columnOf(table, name);
        }
        auto const key = m_primaryKeys.find(table);
        if (key == m_primaryKeys.end() || place >= key->second.size()) {
            return std::nullopt;
        }
        return std::next(key->second.begin(), static_cast<std::ptrdiff_t>(place))->second;
    }

    void tellOthers() {
        for (OdbcRow const& row : m_connection.query(othersQuery, {Text, Number, Text})) {
            bool const isIndex = row.text(0) == "index";
            m_work.account.leftOut(row.text(0),
                                   isIndex ? "it says how data is found, not what it is"
                                           : "it is no object of a model",
                                   {row.text(2)}, static_cast<std::size_t>(row.number(1)));
        }
    }

    OdbcConnection& m_connection;
    DatabaseModel& m_model;
    ImportWork& m_work;
    DatabaseFilter m_filter;
    std::map<std::string, std::size_t> m_tables;
    std::set<std::size_t> m_withoutRowid;
    /// The columns of the primary keys by their place in them.
    std::map<std::size_t, std::map<std::int64_t, std::size_t>> m_primaryKeys;
};

} // namespace

void readSqliteCatalogue(OdbcConnection& connection, DatabaseModel& model, ImportWork& work) {
    SqliteReader(connection, model, work).read();
}

} // namespace vex
