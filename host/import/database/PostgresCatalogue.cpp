#include "host/import/database/PostgresCatalogue.h"

#include "host/import/database/DatabaseFilter.h"
#include "host/import/database/DatabaseReasons.h"
#include "host/import/database/SqlTypes.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/odbc/OdbcConnection.h"

#include <algorithm>
#include <optional>

namespace vex {

namespace {

constexpr OdbcType Text = OdbcType::Text;
constexpr OdbcType Number = OdbcType::Number;

constexpr std::int64_t oldestVersion = 120'000; // 12

// Schemas that begin with pg_ are the server's: no others may be called that.
constexpr char const* schemasQuery = R"(
SELECT n.oid::bigint, n.nspname::text, d.description,
       (n.nspname ~ '^pg_' OR n.nspname = 'information_schema')::int
FROM pg_namespace n
LEFT JOIN pg_description d
  ON d.objoid = n.oid AND d.classoid = 'pg_namespace'::regclass AND d.objsubid = 0
ORDER BY n.nspname COLLATE "C")";

constexpr char const* tablesQuery = R"(
SELECT c.oid::bigint, c.relnamespace::bigint, c.relname::text, c.relkind::text,
       c.relispartition::int, c.relrowsecurity::int, d.description
FROM pg_class c
LEFT JOIN pg_description d
  ON d.objoid = c.oid AND d.classoid = 'pg_class'::regclass AND d.objsubid = 0
WHERE c.relkind IN ('r', 'p', 'f', 'v', 'm') AND c.relnamespace = ANY (CAST(? AS oid[]))
ORDER BY c.relname COLLATE "C")";

// A domain counts as the type that it restricts, however many lie between.
constexpr char const* columnsQuery = R"(
WITH RECURSIVE base(oid, root) AS (
    SELECT oid, oid FROM pg_type WHERE typtype <> 'd'
  UNION ALL
    SELECT t.oid, b.root FROM pg_type t JOIN base b ON t.typbasetype = b.oid
    WHERE t.typtype = 'd')
SELECT a.attrelid::bigint, a.attnum::bigint, a.attname::text,
       format_type(a.atttypid, a.atttypmod), r.typname::text, r.typtype::text,
       a.attnotnull::int, d.description
FROM pg_class c
JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped
LEFT JOIN base b ON b.oid = a.atttypid
LEFT JOIN pg_type r ON r.oid = b.root
LEFT JOIN pg_description d
  ON d.objoid = c.oid AND d.classoid = 'pg_class'::regclass AND d.objsubid = a.attnum
WHERE c.relkind IN ('r', 'p', 'f', 'v', 'm') AND c.relnamespace = ANY (CAST(? AS oid[]))
ORDER BY a.attrelid, a.attnum)";

// Foreign keys that stand for parts of partitioned tables have a parent.
constexpr char const* keysQuery = R"(
SELECT k.oid::bigint, k.contype::text, k.conname::text, k.conrelid::bigint,
       k.confrelid::bigint, p.number::bigint, k.confkey[p.place]::bigint
FROM pg_constraint k
CROSS JOIN LATERAL unnest(k.conkey) WITH ORDINALITY AS p(number, place)
WHERE k.contype IN ('p', 'u', 'f') AND k.conparentid = 0
  AND k.connamespace = ANY (CAST(? AS oid[]))
ORDER BY k.conrelid, k.conname COLLATE "C", k.oid, p.place)";

// What nothing of a model stands for, counted.
constexpr char const* othersQuery = R"(
WITH wanted AS (SELECT CAST(? AS oid[]) AS schemas)
SELECT kind, count(*)::bigint, min(name)::text FROM (
    SELECT CASE relkind WHEN 'S' THEN 'sequence' WHEN 'c' THEN 'type' ELSE 'index' END AS kind,
           relname::text AS name
    FROM pg_class, wanted WHERE relnamespace = ANY (schemas) AND relkind IN ('S', 'i', 'I', 'c')
  UNION ALL
    SELECT 'function', proname::text FROM pg_proc, wanted WHERE pronamespace = ANY (schemas)
  UNION ALL
    SELECT 'type', typname::text FROM pg_type, wanted
    WHERE typnamespace = ANY (schemas) AND typtype IN ('e', 'd', 'r')
  UNION ALL
    SELECT CASE contype WHEN 'c' THEN 'check' ELSE 'exclusion' END, conname::text
    FROM pg_constraint, wanted
    WHERE connamespace = ANY (schemas) AND contype IN ('c', 'x') AND conrelid <> 0
  UNION ALL
    SELECT 'trigger', tgname::text
    FROM pg_trigger JOIN pg_class c ON c.oid = tgrelid, wanted
    WHERE relnamespace = ANY (schemas) AND NOT tgisinternal
  UNION ALL
    SELECT 'column.default', adrelid::regclass::text
    FROM pg_attrdef JOIN pg_class c ON c.oid = adrelid, wanted
    WHERE relnamespace = ANY (schemas)
  UNION ALL
    SELECT 'row-level policy', polname::text
    FROM pg_policy JOIN pg_class c ON c.oid = polrelid, wanted
    WHERE relnamespace = ANY (schemas)
) AS others GROUP BY kind ORDER BY kind)";

constexpr char const* rowSecurity =
    "a view says which objects a role sees, not which rows: filter rows where the data is";

struct OtherKind {
    char const* kind;
    char const* reason;
};

constexpr OtherKind otherKinds[] = {
    {"check", "nothing in a model says what values may be"},
    {"exclusion", "nothing in a model says what values may be"},
    {"column.default", "nothing in a model says what values may be"},
    {"function", "it is no object of a model"},
    {"index", "it says how data is found, not what it is"},
    {"row-level policy", rowSecurity},
    {"sequence", "it is no object of a model"},
    {"trigger", "it is no object of a model"},
    {"type", "columns name it; it is no object of a model"},
};

struct TableKind {
    char letter;
    char const* kind;
    bool isQuery;
};

constexpr TableKind tableKinds[] = {
    {'r', "table", false},
    {'p', "table", false},
    {'f', "foreign table", false},
    {'v', "view", true},
    {'m', "materialized view", true},
};

TableKind const& kindOfTable(std::string const& letter) {
    auto const known =
        std::find_if(std::begin(tableKinds), std::end(tableKinds), [&](TableKind const& each) {
            return letter.size() == 1 && letter[0] == each.letter;
        });
    return known == std::end(tableKinds) ? tableKinds[0] : *known;
}

class CatalogueReader {
public:
    CatalogueReader(OdbcConnection& connection, DatabaseModel& model, ImportWork& work)
        : m_connection(connection), m_model(model), m_work(work), m_filter(work) {}

    PostgresNumbers read() {
        checkVersion();
        readSchemas();
        readTables();
        m_filter.tellUnmatched();
        readColumns();
        readKeys();
        tellOthers();
        return std::move(m_numbers);
    }

private:
    void checkVersion() {
        auto const rows =
            m_connection.query("SELECT current_setting('server_version_num')::bigint", {Number});
        if (rows.empty() || rows.front().number(0) < oldestVersion) {
            m_work.refuse("the server is older than PostgreSQL 12; import from a newer one");
        }
    }

    void readSchemas() {
        for (OdbcRow const& row : m_connection.query(schemasQuery, {Number, Text, Text, Number})) {
            std::string const& name = row.text(1);
            if (row.isTrue(3)) {
                m_work.account.leftOut("schema", databaseReasons::System, {name});
            } else if (char const* const against = databaseReasons::againstName(name)) {
                m_work.account.leftOut("schema", against, {name});
            } else if (!m_filter.wantsSchema(name)) {
                m_work.account.leftOut("schema", databaseReasons::Schema, {name});
            } else {
                m_schemas.emplace(row.number(0), m_model.schemas.size());
                m_model.schemas.push_back({name, row.text(2)});
                m_numbers.schemas += m_numbers.schemas.empty() ? "{" : ",";
                m_numbers.schemas += std::to_string(row.number(0));
            }
        }
        m_numbers.schemas += m_numbers.schemas.empty() ? "{}" : "}";
    }

    void readTables() {
        for (OdbcRow const& row :
             m_connection.query(tablesQuery, {Number, Number, Text, Text, Number, Number, Text},
                                {m_numbers.schemas})) {
            auto const schema = m_schemas.find(row.number(1));
            if (schema == m_schemas.end()) {
                continue; // made since the schemas were read
            }
            readTable(row, schema->second);
        }
    }

    void readTable(OdbcRow const& row, std::size_t schema) {
        TableKind const& kind = kindOfTable(row.text(3));
        std::string const& name = row.text(2);
        std::string const where = m_model.schemas[schema].name + '.' + name;
        if (row.isTrue(4)) {
            m_work.account.leftOut("partition", "it is a part of a table that is imported whole",
                                   {where});
            return;
        }
        if (char const* const against = databaseReasons::againstName(name)) {
            m_work.account.leftOut(kind.kind, against, {where});
            return;
        }
        if (!m_filter.wantsTable(m_model.schemas[schema].name, name)) {
            m_work.account.leftOut(kind.kind, databaseReasons::Filter, {where});
            return;
        }
        m_work.account.mapped(kind.kind);
        if (kind.isQuery) {
            m_work.account.leftOut("view.definition", databaseReasons::Definition, {where});
        }
        if (row.isTrue(5)) {
            m_work.account.leftOut("table.row-level security", rowSecurity, {where});
        }
        m_numbers.tables.emplace(row.number(0), m_model.tables.size());
        m_model.tables.push_back(
            {.schema = schema, .name = name, .kind = kind.kind, .comment = row.text(6)});
    }

    void readColumns() {
        for (OdbcRow const& row : m_connection.query(
                 columnsQuery, {Number, Number, Text, Text, Text, Text, Number, Text},
                 {m_numbers.schemas})) {
            auto const table = m_numbers.tables.find(row.number(0));
            if (table == m_numbers.tables.end()) {
                continue;
            }
            auto& columns = m_model.tables[table->second].columns;
            if (char const* const against = databaseReasons::againstName(row.text(2))) {
                m_work.account.leftOut("column", against,
                                       {m_model.tables[table->second].name + '.' + row.text(2)});
                continue;
            }
            bool const isEnum = row.text(5) == "e";
            m_numbers.columns.emplace(std::pair(row.number(0), row.number(1)), columns.size());
            columns.push_back(
                {.name = row.text(2),
                 .sqlType = databaseReasons::isWritable(row.text(3)) ? row.text(3) : "",
                 .datatype = isEnum ? "string" : datatypeOfPostgres(row.text(4)),
                 .isNullable = !row.isTrue(6),
                 .comment = row.text(7)});
        }
    }

    void readKeys() {
        auto const rows = m_connection.query(
            keysQuery, {Number, Text, Text, Number, Number, Number, Number}, {m_numbers.schemas});
        for (std::size_t first = 0; first < rows.size();) {
            std::size_t end = first;
            while (end < rows.size() && rows[end].number(0) == rows[first].number(0)) {
                ++end;
            }
            readKey({rows.begin() + static_cast<std::ptrdiff_t>(first),
                     rows.begin() + static_cast<std::ptrdiff_t>(end)});
            first = end;
        }
    }

    std::optional<std::size_t> columnOf(std::int64_t table, std::int64_t number) const {
        auto const found = m_numbers.columns.find({table, number});
        return found == m_numbers.columns.end() ? std::nullopt : std::optional(found->second);
    }

    /// The rows of one constraint, a column each.
    void readKey(std::vector<OdbcRow> const& rows) {
        auto const table = m_numbers.tables.find(rows.front().number(3));
        if (table == m_numbers.tables.end()) {
            return; // of a table that is told of already
        }
        DatabaseTable& owner = m_model.tables[table->second];
        std::vector<std::size_t> columns;
        for (OdbcRow const& row : rows) {
            if (auto const column = columnOf(row.number(3), row.number(5))) {
                columns.push_back(*column);
            }
        }
        std::string const& type = rows.front().text(1);
        for (std::size_t const column : columns) {
            owner.columns[column].isKey = owner.columns[column].isKey || type != "u";
        }
        if (type == "f") {
            readForeignKey(rows, table->second, std::move(columns));
            return;
        }
        m_work.account.mapped(type == "p" ? "primary key" : "unique key");
        owner.keys.push_back(std::move(columns));
    }

    void readForeignKey(std::vector<OdbcRow> const& rows, std::size_t table,
                        std::vector<std::size_t> columns) {
        auto const target = m_numbers.tables.find(rows.front().number(4));
        std::vector<std::size_t> targetColumns;
        for (OdbcRow const& row : rows) {
            if (auto const column = columnOf(row.number(4), row.number(6))) {
                targetColumns.push_back(*column);
            }
        }
        if (target == m_numbers.tables.end() || targetColumns.size() != rows.size() ||
            columns.size() != rows.size()) {
            m_work.account.leftOut("foreign key", databaseReasons::Target, {rows.front().text(2)});
            return;
        }
        m_work.account.mapped("foreign key");
        m_model.foreignKeys.push_back(
            {table, std::move(columns), target->second, std::move(targetColumns)});
    }

    void tellOthers() {
        for (OdbcRow const& row :
             m_connection.query(othersQuery, {Text, Number, Text}, {m_numbers.schemas})) {
            auto const known =
                std::find_if(std::begin(otherKinds), std::end(otherKinds),
                             [&](OtherKind const& each) { return row.text(0) == each.kind; });
            if (known != std::end(otherKinds)) {
                m_work.account.leftOut(known->kind, known->reason, {row.text(2)},
                                       static_cast<std::size_t>(row.number(1)));
            }
        }
    }

    OdbcConnection& m_connection;
    DatabaseModel& m_model;
    ImportWork& m_work;
    DatabaseFilter m_filter;
    PostgresNumbers m_numbers;
    std::map<std::int64_t, std::size_t> m_schemas;
};

} // namespace

PostgresNumbers readPostgresCatalogue(OdbcConnection& connection, DatabaseModel& model,
                                      ImportWork& work) {
    return CatalogueReader(connection, model, work).read();
}

} // namespace vex
