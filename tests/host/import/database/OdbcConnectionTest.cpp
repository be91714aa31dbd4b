#include "host/import/odbc/OdbcConnection.h"

#include "KRLException.h"
#include "host/import/odbc/ConnectionString.h"
#include "host/import/odbc/OdbcException.h"
#include "host/store/image/Budget.h"
#include "tests/host/import/database/ImportedDatabase.h"
#include "tests/host/import/database/PostgresServer.h"

#include <thread>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using vex::ConnectionString;
using vex::OdbcConnection;
using vex::OdbcType;

constexpr vex::OdbcLimits manyLimits{1'000'000, 100'000'000};

class OdbcToSqlite : public DatabaseTest<SqliteFile> {};
class OdbcToPostgres : public DatabaseTest<PostgresServer> {};

std::string repeated(std::string const& text, std::size_t times) {
    std::string all;
    for (std::size_t number = 0; number < times; ++number) {
        all += text;
    }
    return all;
}

// Around the length of a piece, with characters of one to four bytes and of two units.
void expectTextsOfAnyLength(OdbcConnection& connection, std::string const& query) {
    for (std::size_t const length : {0U, 1U, 2046U, 2047U, 2048U, 4094U, 4095U, 9000U}) {
        for (std::string const letter : {"x", "ä", "店", "😀"}) {
            std::string const text = repeated(letter, length);
            auto const rows = connection.query(query, {OdbcType::Text}, {text});
            ASSERT_EQ(rows.size(), 1U);
            ASSERT_EQ(rows.front().text(0), text) << letter << length;
        }
    }
}

TEST_F(OdbcToSqlite, TextsOfAnyLengthAndScriptComeWhole) {
    SqliteFile const file("");
    OdbcConnection connection(ConnectionString(file.connection()), manyLimits);
    expectTextsOfAnyLength(connection, "SELECT ?");
}

TEST_F(OdbcToPostgres, TextsOfAnyLengthAndScriptComeWhole) {
    auto const& server = PostgresServer::shared();
    OdbcConnection connection(ConnectionString(server.connectionTo("postgres")), manyLimits);
    expectTextsOfAnyLength(connection, "SELECT CAST(? AS text)");
}

TEST_F(OdbcToSqlite, NullsNumbersAndTextsAreTold) {
    SqliteFile const file("");
    OdbcConnection connection(ConnectionString(file.connection()), manyLimits);
    auto const rows = connection.query(
        "SELECT NULL, NULL, -9223372036854775807, '' UNION ALL SELECT 1, 'a', 2, 'b'",
        {OdbcType::Number, OdbcType::Text, OdbcType::Number, OdbcType::Text});
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_TRUE(rows[0].isNull(0));
    EXPECT_TRUE(rows[0].isNull(1));
    EXPECT_EQ(rows[0].number(2), -9'223'372'036'854'775'807);
    EXPECT_FALSE(rows[0].isNull(3));
    EXPECT_EQ(rows[1].number(0), 1);
    EXPECT_EQ(rows[1].text(1), "a");
}

TEST_F(OdbcToSqlite, WhatTheDatabaseRefusesIsTold) {
    SqliteFile const file("");
    OdbcConnection connection(ConnectionString(file.connection()), manyLimits);
    try {
        connection.query("SELECT * FROM missing", {OdbcType::Text});
        ADD_FAILURE();
    } catch (vex::OdbcException const& refused) {
        EXPECT_THAT(refused.what(), HasSubstr("no such table: missing"));
    }
    EXPECT_THROW(connection.query("SELECT 1", {OdbcType::Text, OdbcType::Text}),
                 vex::OdbcException);
}

TEST_F(OdbcToSqlite, ValuesAndBytesAreLimitedForAllResultsTogether) {
    SqliteFile const file("");
    OdbcConnection connection(ConnectionString(file.connection()), {.values = 3, .bytes = 20});
    EXPECT_EQ(connection.query("SELECT 'aaaa', 1", {OdbcType::Text, OdbcType::Number}).size(), 1U);
    EXPECT_THROW(connection.query("SELECT 1, 2", {OdbcType::Number, OdbcType::Number}),
                 vex::OdbcLimitException);
    EXPECT_THROW(connection.query("SELECT 'aaaaaaa'", {OdbcType::Text}), vex::OdbcLimitException);
}

void expectInterrupted(OdbcConnection& connection, std::string const& endless) {
    std::atomic<bool> cancelled = false;
    vex::Budget const budget({.cancelled = &cancelled});
    std::thread other([&] { cancelled = true; });
    EXPECT_THROW(connection.query(endless, {OdbcType::Text}), KRLLimitException);
    other.join();
}

TEST_F(OdbcToSqlite, AQueryWithoutAnEndIsEndedByTheBudget) {
    SqliteFile const file("");
    OdbcConnection connection(ConnectionString(file.connection()), manyLimits);
    expectInterrupted(connection, "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) "
                                  "SELECT max(x) FROM c");
}

TEST_F(OdbcToPostgres, AQueryWithoutAnEndIsEndedByTheBudget) {
    auto const& server = PostgresServer::shared();
    OdbcConnection connection(ConnectionString(server.connectionTo("postgres")), manyLimits);
    expectInterrupted(connection, "SELECT CAST(pg_sleep(1000000) AS text)");
}

TEST(OdbcDrivers, ThatAreMissingAreToldOf) {
    EXPECT_THROW(OdbcConnection(ConnectionString("Driver=none of these"), manyLimits),
                 vex::OdbcException);
}

} // namespace
