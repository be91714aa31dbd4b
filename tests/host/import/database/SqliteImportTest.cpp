#include "tests/host/import/database/ImportedDatabase.h"

#include <sstream>

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class SqliteImport : public DatabaseTest<SqliteFile> {};

TEST_F(SqliteImport, MakesQuerySubjectsOfTablesWithTypesAndKeys) {
    SqliteFile const file(R"(
CREATE TABLE station (station_id INTEGER PRIMARY KEY, city VARCHAR(40) NOT NULL);
CREATE TABLE rental (rental_id INTEGER PRIMARY KEY, taken_from INTEGER NOT NULL REFERENCES station,
    returned_at TIMESTAMP, fee DECIMAL(8,2) DEFAULT 0, paid BOOLEAN, note);
CREATE VIEW open AS SELECT rental_id, fee FROM rental WHERE returned_at IS NULL;
CREATE INDEX by_fee ON rental (fee);
)");
    ImportedDatabase const imported(file.connection());
    ASSERT_TRUE(imported.isWritten()) << imported.errors();
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(
  <namespace id="schema:[main]" name="main">
    <querySubject id="table:[main].[open]" name="open" tableType="view">
      <queryItem id="column:[main].[open].[rental_id]" name="rental_id" datatype="int64" usage="fact" sqlType="INTEGER" nullable="true"/>
      <queryItem id="column:[main].[open].[fee]" name="fee" datatype="decimal" usage="fact" sqlType="DECIMAL(8,2)" nullable="true"/>
    </querySubject>
    <querySubject id="table:[main].[rental]" name="rental" tableType="table">
      <queryItem id="column:[main].[rental].[rental_id]" name="rental_id" datatype="int64" usage="identifier" sqlType="INTEGER" nullable="false"/>
      <queryItem id="column:[main].[rental].[taken_from]" name="taken_from" datatype="int64" usage="identifier" sqlType="INTEGER" nullable="false"/>
      <queryItem id="column:[main].[rental].[returned_at]" name="returned_at" datatype="dateTime" usage="attribute" sqlType="TIMESTAMP" nullable="true"/>
      <queryItem id="column:[main].[rental].[fee]" name="fee" datatype="decimal" usage="fact" sqlType="DECIMAL(8,2)" nullable="true"/>
      <queryItem id="column:[main].[rental].[paid]" name="paid" datatype="boolean" usage="attribute" sqlType="BOOLEAN" nullable="true"/>
      <queryItem id="column:[main].[rental].[note]" name="note" usage="attribute" nullable="true"/>
    </querySubject>
    <querySubject id="table:[main].[station]" name="station" tableType="table">
      <queryItem id="column:[main].[station].[station_id]" name="station_id" datatype="int64" usage="identifier" sqlType="INTEGER" nullable="false"/>
      <queryItem id="column:[main].[station].[city]" name="city" datatype="string" usage="attribute" sqlType="VARCHAR(40)" nullable="false"/>
    </querySubject>
    <relationship id="relationship:[main].[rental].[taken_from].[main].[station].[station_id]" name="rental.taken_from → station.station_id" left="[main].[rental]" leftCardinality="0..n" right="[main].[station]" rightCardinality="1..1" expression="[main].[rental].[taken_from] = [main].[station].[station_id]"/>
  </namespace>
)xml"));
    EXPECT_EQ(imported.account().mappedOf("table"), 2U);
    EXPECT_EQ(imported.account().mappedOf("view"), 1U);
    EXPECT_EQ(imported.account().mappedOf("column"), 10U);
    EXPECT_EQ(imported.account().mappedOf("primary key"), 2U);
    EXPECT_EQ(imported.account().mappedOf("foreign key"), 1U);
    EXPECT_THAT(imported.reasonFor("index", "by_fee"), HasSubstr("how data is found"));
    EXPECT_THAT(imported.reasonFor("view.definition", "open"), HasSubstr("it is a query"));
    EXPECT_THAT(imported.reasonFor("column.default", "rental.fee"), HasSubstr("values"));
    EXPECT_THAT(imported.rolesOf("owner"), ElementsAre("owner"));
}

TEST_F(SqliteImport, KeepsNamesOfAnyScriptAndWithBracketsAndQuotes) {
    SqliteFile const file(R"(
CREATE TABLE "Ä]b' ; ""x""" ("na""ïve😀" INTEGER PRIMARY KEY, "a.b" INT);
CREATE TABLE child (p REFERENCES "ä]B' ; ""x""");
)");
    // The letters of ASCII alone are the same in either case: the second table leads nowhere.
    ImportedDatabase const imported(file.connection());
    EXPECT_THAT(imported.model(), HasSubstr(R"(id="table:[main].[Ä]]b' ; &quot;x&quot;]")"));
    EXPECT_THAT(imported.model(), HasSubstr(R"(name="na&quot;ïve😀")"));
    EXPECT_THAT(imported.reasonFor("foreign key", "child: ä]B' ; \"x\""), HasSubstr("leads to"));
}

TEST_F(SqliteImport, FindsForeignKeysOfSeveralColumnsAndOfUniqueOnes) {
    SqliteFile const file(R"(
CREATE TABLE "Order" (y INT, n INT, PRIMARY KEY (y, n)) WITHOUT ROWID;
CREATE TABLE line (y INT NOT NULL, n INT, k INT UNIQUE REFERENCES "order"(y),
    FOREIGN KEY (y, n) REFERENCES ORDER_, FOREIGN KEY (N, Y) REFERENCES "ORDER" (N, Y));
)");
    ImportedDatabase const imported(file.connection());
    EXPECT_THAT(
        imported.model(),
        HasSubstr(
            R"(name="line.n, line.y → Order.n, Order.y" left="[main].[line]" leftCardinality="0..n" right="[main].[Order]" rightCardinality="0..1" expression="[main].[line].[n] = [main].[Order].[n] and [main].[line].[y] = [main].[Order].[y]")"));
    EXPECT_THAT(
        imported.model(),
        HasSubstr(R"(name="line.k → Order.y" left="[main].[line]" leftCardinality="0..1")"));
    EXPECT_THAT(imported.reasonFor("foreign key", "line: ORDER_"), HasSubstr("leads to"));
    EXPECT_THAT(
        imported.model(),
        HasSubstr(
            R"(name="n" datatype="int64" usage="identifier" sqlType="INT" nullable="false")"));
}

TEST_F(SqliteImport, LeavesOutWhatIsNamelessOrTheSystemsOwn) {
    SqliteFile const file(R"(
CREATE TABLE "" (a INT);
CREATE TABLE t (id INTEGER PRIMARY KEY AUTOINCREMENT, "" INT);
CREATE VIRTUAL TABLE words USING fts5(text);
)");
    ImportedDatabase const imported(file.connection());
    EXPECT_EQ(imported.reasonFor("table", ""), "it has no name");
    EXPECT_EQ(imported.reasonFor("column", "t."), "it has no name");
    EXPECT_EQ(imported.reasonFor("table", "sqlite_sequence"), "it is the system's own");
    EXPECT_EQ(imported.reasonFor("table", "words_data"), "it is the system's own");
    EXPECT_THAT(imported.seenBy("owner"),
                ElementsAre("schema:[main]", "table:[main].[t]", "column:[main].[t].[id]",
                            "table:[main].[words]", "column:[main].[words].[text]"));
}

TEST_F(SqliteImport, ReadsTheOtherTablesWhenAViewCannotBeReadAnyMore) {
    SqliteFile const file(R"(
CREATE TABLE t (a INT); CREATE TABLE gone (b INT); CREATE VIEW v AS SELECT b FROM gone;
PRAGMA writable_schema = ON; DELETE FROM sqlite_schema WHERE name = 'gone';
)");
    ImportedDatabase const imported(file.connection());
    ASSERT_TRUE(imported.isWritten()) << imported.errors();
    EXPECT_THAT(imported.seenBy("owner"), Contains("column:[main].[t].[a]"));
    EXPECT_THAT(imported.seenBy("owner"), Contains("table:[main].[v]"));
    EXPECT_THAT(imported.notes(), Contains(HasSubstr("the columns of the view \"v\"")));
}

// Tables and keys that others made.
TEST_F(SqliteImport, BringsInAPublicDatabase) {
    std::ostringstream sql;
    sql << std::ifstream(VEX_SOURCE_DIR "/tests/host/import/database/models/chinook.sqlite.sql")
               .rdbuf();
    SqliteFile const file(sql.str());
    ImportedDatabase const imported(file.connection());
    ASSERT_TRUE(imported.isWritten()) << imported.errors();
    EXPECT_EQ(imported.account().mappedOf("table"), 11U);
    EXPECT_EQ(imported.account().mappedOf("column"), 64U);
    EXPECT_EQ(imported.account().mappedOf("foreign key"), 11U);
    EXPECT_THAT(imported.model(), HasSubstr(R"(name="Employee.ReportsTo → Employee.EmployeeId")"));
    EXPECT_THAT(
        imported.model(),
        HasSubstr(
            R"xml(name="Total" datatype="decimal" usage="fact" sqlType="NUMERIC(10,2)" nullable="false")xml"));
}

TEST_F(SqliteImport, FindsAFileWhateverItsNameIs) {
    SqliteFile const file("CREATE TABLE t (a INT);");
    std::string const other = file.path() + " %20=+{}.db";
    std::filesystem::copy_file(file.path(), other);
    ImportedDatabase const imported("Driver=SQLite3;Database=" + other);
    EXPECT_TRUE(imported.isWritten()) << imported.errors();
}

TEST_F(SqliteImport, TakesTablesAsTheOptionsSay) {
    SqliteFile const file("CREATE TABLE a1 (x INT); CREATE TABLE a2 (x INT); CREATE TABLE b (x "
                          "INT REFERENCES a2 (x));");
    ImportedDatabase const imported(file.connection(),
                                    {{"include", {"a*", "main.b"}}, {"exclude", {"a2"}}});
    EXPECT_THAT(imported.seenBy("owner"), Contains("table:[main].[a1]"));
    EXPECT_THAT(imported.seenBy("owner"), Contains("table:[main].[b]"));
    EXPECT_THAT(imported.seenBy("owner"), Not(Contains("table:[main].[a2]")));
    EXPECT_THAT(imported.reasonFor("table", "a2"), HasSubstr("--exclude"));
    EXPECT_THAT(imported.reasonFor("foreign key", "b: a2"), HasSubstr("not imported"));
    ImportedDatabase const nothing(file.connection(), {{"schema", {"other*"}}});
    EXPECT_FALSE(nothing.isWritten());
    EXPECT_THAT(nothing.errors(), HasSubstr("no table to import"));
}

TEST_F(SqliteImport, MakesNoFileOfOneThatIsMissing) {
    SqliteFile const file("CREATE TABLE t (a INT);");
    std::string const missing = file.path() + ".none";
    ImportedDatabase const imported("Driver=SQLite3;Database=" + missing);
    EXPECT_FALSE(imported.isWritten());
    EXPECT_THAT(imported.errors(), HasSubstr("is there such a file"));
    EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(SqliteImport, RefusesAFileThatIsNoDatabase) {
    SqliteFile const file("CREATE TABLE t (a INT);");
    std::ofstream(file.path()) << "This is a letter to the reader, not a database of any kind.\n";
    ImportedDatabase const imported(file.connection());
    EXPECT_FALSE(imported.isWritten());
    EXPECT_THAT(imported.errors(), HasSubstr("file is not a database"));
}

TEST_F(SqliteImport, EndsAtItsLimits) {
    SqliteFile const file("CREATE TABLE t (a INT, b INT, c INT);");
    vex::ImportLimits limits;
    limits.sourceValues = 10;
    ImportedDatabase const imported(file.connection(), {}, limits);
    EXPECT_FALSE(imported.isWritten());
    EXPECT_THAT(imported.errors(), HasSubstr("more values than an import takes"));
}

TEST(DatabaseDrivers, ThatAreMissingAreNamedWithTheirPackage) {
    ImportedDatabase const imported("Driver=My SQLite;Database=x");
    EXPECT_FALSE(imported.isWritten());
    EXPECT_THAT(imported.errors(),
                HasSubstr("the driver \"My SQLite\" is not installed: install the Debian package "
                          "libsqliteodbc; installed are: "));
    EXPECT_THAT(ImportedDatabase("nowhere").errors(), HasSubstr("name a driver"));
}

} // namespace
