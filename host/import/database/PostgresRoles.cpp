#include "host/import/database/DatabaseReasons.h"
#include "host/import/database/PostgresCatalogue.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/draft/PlainText.h"
#include "host/import/odbc/OdbcConnection.h"

#include <optional>

namespace vex {

namespace {

constexpr OdbcType Text = OdbcType::Text;
constexpr OdbcType Number = OdbcType::Number;

/// What the server calls everybody, which is no role there.
constexpr std::int64_t everybody = 0;
constexpr char const* everybodysName = "public";

constexpr char const* rolesQuery = R"(
SELECT r.oid::bigint, r.rolname::text, r.rolcanlogin::int,
       has_database_privilege(r.oid, current_database(), 'CONNECT')::int,
       (r.rolname ~ '^pg_')::int, d.description
FROM pg_roles r
LEFT JOIN pg_shdescription d ON d.objoid = r.oid AND d.classoid = 'pg_authid'::regclass
ORDER BY r.rolname COLLATE "C")";

// Who is a member of what, through others too, and whether what is granted to the one counts
// for the other without a word of his own.
constexpr char const* membersQuery = R"(
WITH RECURSIVE memberships(member, role) AS (
    SELECT member, roleid FROM pg_auth_members
  UNION
    SELECT m.member, a.roleid FROM memberships m JOIN pg_auth_members a ON a.member = m.role)
SELECT member::bigint, role::bigint, pg_has_role(member, role, 'USAGE')::int
FROM memberships ORDER BY member, role)";

// Tables of one schema and owner with the same grants are asked about once: the first of them
// stands for all.
constexpr char const* alikeQuery = R"(
SELECT c.oid::bigint,
       min(c.oid::bigint) OVER (PARTITION BY c.relnamespace, c.relowner, c.relacl::text)
FROM pg_class c
WHERE c.relnamespace = ANY (CAST(? AS oid[])) AND c.relkind IN ('r', 'p', 'f', 'v', 'm')
  AND NOT c.relispartition)";

// Tables that are read whole. 0 is everybody.
constexpr char const* tablesQuery = R"(
WITH wanted AS (SELECT CAST(? AS oid[]) AS schemas),
roles AS MATERIALIZED (
    SELECT oid FROM pg_roles WHERE rolname !~ '^pg_' UNION ALL SELECT 0::oid),
used AS MATERIALIZED (
    SELECT r.oid AS role, n.oid AS space
    FROM wanted, roles r, pg_namespace n
    WHERE n.oid = ANY (schemas) AND has_schema_privilege(r.oid, n.oid, 'USAGE')),
asked AS MATERIALIZED (
    SELECT min(c.oid::bigint)::oid AS oid, c.relnamespace
    FROM wanted, pg_class c
    WHERE c.relnamespace = ANY (schemas) AND c.relkind IN ('r', 'p', 'f', 'v', 'm')
      AND NOT c.relispartition
    GROUP BY c.relnamespace, c.relowner, c.relacl::text)
SELECT u.role::bigint, a.oid::bigint
FROM used u JOIN asked a ON a.relnamespace = u.space
WHERE has_table_privilege(u.role, a.oid, 'SELECT')
ORDER BY u.role, a.oid)";

// Columns that are read one by one, of tables that are not read whole.
constexpr char const* columnsQuery = R"(
WITH wanted AS (SELECT CAST(? AS oid[]) AS schemas),
roles AS MATERIALIZED (
    SELECT oid FROM pg_roles WHERE rolname !~ '^pg_' UNION ALL SELECT 0::oid),
used AS MATERIALIZED (
    SELECT r.oid AS role, n.oid AS space
    FROM wanted, roles r, pg_namespace n
    WHERE n.oid = ANY (schemas) AND has_schema_privilege(r.oid, n.oid, 'USAGE')),
granted AS MATERIALIZED (
    SELECT c.oid, c.relnamespace, a.attnum
    FROM wanted, pg_class c
    JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped
    WHERE c.relnamespace = ANY (schemas) AND c.relkind IN ('r', 'p', 'f', 'v', 'm')
      AND NOT c.relispartition AND a.attacl IS NOT NULL)
SELECT u.role::bigint, g.oid::bigint, g.attnum::bigint
FROM used u JOIN granted g ON g.relnamespace = u.space
WHERE NOT has_table_privilege(u.role, g.oid, 'SELECT')
  AND has_column_privilege(u.role, g.oid, g.attnum, 'SELECT')
ORDER BY u.role, g.oid, g.attnum)";

// What was granted in so many words.
constexpr char const* grantsQuery = R"(
WITH wanted AS (SELECT CAST(? AS oid[]) AS schemas)
SELECT (x.privilege_type = 'SELECT')::int,
       has_schema_privilege(x.grantee, x.space, 'USAGE')::int, count(*)::bigint
FROM (
    SELECT c.relnamespace AS space, e.grantee, e.privilege_type
    FROM wanted, pg_class c, aclexplode(c.relacl) e
    WHERE c.relnamespace = ANY (schemas) AND c.relkind IN ('r', 'p', 'f', 'v', 'm')
      AND e.grantee <> c.relowner
  UNION ALL
    SELECT c.relnamespace, e.grantee, e.privilege_type
    FROM wanted, pg_class c JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0,
         aclexplode(a.attacl) e
    WHERE c.relnamespace = ANY (schemas) AND c.relkind IN ('r', 'p', 'f', 'v', 'm')
      AND NOT a.attisdropped AND e.grantee <> c.relowner) x
GROUP BY 1, 2 ORDER BY 1, 2)";

class RolesReader {
public:
    RolesReader(OdbcConnection& connection, PostgresNumbers const& numbers, DatabaseModel& model,
                ImportWork& work)
        : m_connection(connection), m_numbers(numbers), m_model(model), m_work(work) {}

    void read() {
        readRoles();
        readMembers();
        readTables();
        readColumns();
        tellGrants();
    }

private:
    void readRoles() {
        m_roles.emplace(everybody, m_model.roles.size());
        m_model.roles.push_back({.name = everybodysName, .isEverybody = true});
        for (OdbcRow const& row :
             m_connection.query(rolesQuery, {Number, Text, Number, Number, Number, Text})) {
            std::string const& name = row.text(1);
            if (row.isTrue(4)) {
                m_work.account.leftOut("role", databaseReasons::System, {name});
            } else if (char const* const against = databaseReasons::againstName(name)) {
                m_work.account.leftOut("role", against, {name});
            } else if (trimmed(name) != name) {
                m_work.account.leftOut("role",
                                       "white space at the ends of its name would be lost, and it "
                                       "would be another's",
                                       {name});
            } else {
                m_roles.emplace(row.number(0), m_model.roles.size());
                m_model.roles.push_back({.name = name,
                                         .comment = row.text(5),
                                         .canLogIn = row.isTrue(2),
                                         .mayConnect = row.isTrue(3)});
            }
        }
    }

    DatabaseRole* roleOf(std::int64_t number) {
        auto const known = m_roles.find(number);
        return known == m_roles.end() ? nullptr : &m_model.roles[known->second];
    }

    void readMembers() {
        for (OdbcRow const& row : m_connection.query(membersQuery, {Number, Number, Number})) {
            DatabaseRole* const member = roleOf(row.number(0));
            DatabaseRole const* const role = roleOf(row.number(1));
            if (member == nullptr) {
                continue; // a role that is told of already
            }
            std::string const place = member->name + (role == nullptr ? "" : ": " + role->name);
            if (!row.isTrue(2)) {
                m_work.account.leftOut(
                    "membership", "it is not inherited: it counts after SET ROLE only", {place});
                continue;
            }
            m_work.account.mapped("membership");
            if (role != nullptr) { // what else it brings, the server has counted in
                member->inherited.push_back(m_roles[row.number(1)]);
            }
        }
    }

    void readTables() {
        std::map<std::int64_t, std::size_t> groups; // by the number of the first table
        for (OdbcRow const& row :
             m_connection.query(alikeQuery, {Number, Number}, {m_numbers.schemas})) {
            auto const table = m_numbers.tables.find(row.number(0));
            if (table == m_numbers.tables.end()) {
                continue; // it was left out
            }
            auto& alike = m_model.tablesGrantedAlike;
            auto const [group, isNew] = groups.try_emplace(row.number(1), alike.size());
            if (isNew) {
                alike.emplace_back();
            }
            alike[group->second].push_back(table->second);
        }
        for (OdbcRow const& row :
             m_connection.query(tablesQuery, {Number, Number}, {m_numbers.schemas})) {
            DatabaseRole* const role = roleOf(row.number(0));
            auto const group = groups.find(row.number(1));
            if (role != nullptr && group != groups.end()) {
                role->tablesGrantedAlike.push_back(group->second);
            }
        }
    }

    void readColumns() {
        for (OdbcRow const& row :
             m_connection.query(columnsQuery, {Number, Number, Number}, {m_numbers.schemas})) {
            DatabaseRole* const role = roleOf(row.number(0));
            auto const table = m_numbers.tables.find(row.number(1));
            auto const column = m_numbers.columns.find({row.number(1), row.number(2)});
            if (role != nullptr && table != m_numbers.tables.end() &&
                column != m_numbers.columns.end()) {
                role->columns.push_back({table->second, column->second});
            }
        }
    }

    void tellGrants() {
        std::size_t unused = 0;
        for (OdbcRow const& row :
             m_connection.query(grantsQuery, {Number, Number, Number}, {m_numbers.schemas})) {
            auto const count = static_cast<std::size_t>(row.number(2));
            if (!row.isTrue(0)) {
                m_work.account.leftOut("grant", "it lets somebody write, not read", {}, count);
                continue;
            }
            m_work.account.mapped("grant", count);
            unused += row.isTrue(1) ? 0 : count;
        }
        if (unused > 0) {
            m_work.account.note("grants to read in schemas that the role itself may not use: " +
                                std::to_string(unused) +
                                "; they count for those of its members who may");
        }
    }

    OdbcConnection& m_connection;
    PostgresNumbers const& m_numbers;
    DatabaseModel& m_model;
    ImportWork& m_work;
    std::map<std::int64_t, std::size_t> m_roles;
};

} // namespace

void readPostgresRoles(OdbcConnection& connection, PostgresNumbers const& numbers,
                       DatabaseModel& model, ImportWork& work) {
    RolesReader(connection, numbers, model, work).read();
}

} // namespace vex
