#include "host/import/database/DatabaseModel.h"
#include "host/import/database/PostgresCatalogue.h"
#include "host/import/database/SqliteCatalogue.h"
#include "host/import/odbc/ConnectionString.h"
#include "host/import/odbc/OdbcConnection.h"
#include "tests/host/import/database/ImportedDatabase.h"
#include "tests/host/import/database/PostgresServer.h"

#include <gmock/gmock.h>

namespace {

class SqliteGrowth : public DatabaseTest<SqliteFile> {};
class PostgresGrowth : public DatabaseTest<PostgresServer> {};

/// Tables that refer to each other.
std::string tables(int count) {
    std::string sql = "BEGIN;\nCREATE TABLE t0 (id int PRIMARY KEY, n int UNIQUE);\n";
    for (int number = 1; number < count; ++number) {
        std::string const name = "t" + std::to_string(number);
        sql += "CREATE TABLE " + name + " (id int PRIMARY KEY, n int UNIQUE REFERENCES t" +
               std::to_string(number - 1) + ");\n";
    }
    return sql + "COMMIT;\n";
}

struct Reading {
    vex::DatabaseModel model{};
    std::size_t statements = 0;
};

template <class Read> Reading readingOf(std::string const& source, Read const& read) {
    vex::OdbcConnection connection(vex::ConnectionString(source), {1'000'000, 100'000'000});
    vex::ImportRequest request;
    request.source = source;
    vex::ImportWork work(request);
    Reading reading;
    read(connection, reading.model, work);
    reading.statements = connection.statementsDone();
    return reading;
}

TEST_F(SqliteGrowth, AsksAsOftenForAThousandTablesAsForOne) {
    SqliteFile const one(tables(1));
    SqliteFile const thousand(tables(1'000));
    Reading const few = readingOf(one.connection(), &vex::readSqliteCatalogue);
    Reading const many = readingOf(thousand.connection(), &vex::readSqliteCatalogue);
    EXPECT_EQ(many.model.tables.size(), 1'000U);
    EXPECT_EQ(many.model.foreignKeys.size(), 999U);
    EXPECT_EQ(few.statements, many.statements);
}

TEST_F(PostgresGrowth, AsksAsOftenForAThousandTablesAsForOne) {
    PostgresServer& server = PostgresServer::shared();
    server.create("one", tables(1));
    server.create("thousand", tables(1'000) + "CREATE ROLE of_thousand;\n"
                                              "GRANT SELECT ON ALL TABLES IN SCHEMA public TO "
                                              "of_thousand;\n");
    auto const read = [](vex::OdbcConnection& connection, vex::DatabaseModel& model,
                         vex::ImportWork& work) {
        auto const numbers = vex::readPostgresCatalogue(connection, model, work);
        vex::readPostgresRoles(connection, numbers, model, work);
    };
    Reading const few = readingOf(server.connectionTo("one"), read);
    Reading const many = readingOf(server.connectionTo("thousand"), read);
    EXPECT_EQ(many.model.tables.size(), 1'000U);
    EXPECT_EQ(many.model.foreignKeys.size(), 999U);
    EXPECT_EQ(few.statements, many.statements);
    // Tables that are granted alike are asked about together.
    EXPECT_EQ(many.model.tablesGrantedAlike.size(), 1U);
}

} // namespace
