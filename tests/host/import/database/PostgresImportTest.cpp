#include "KRLException.h"
#include "host/store/image/Budget.h"
#include "tests/host/import/database/ImportedDatabase.h"
#include "tests/host/import/database/PostgresServer.h"

#include <sstream>

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;

class PostgresImport : public DatabaseTest<PostgresServer> {
protected:
    static PostgresServer& server() {
        static bool const isMade = [] {
            std::ostringstream sql;
            sql << std::ifstream(VEX_SOURCE_DIR "/tests/host/import/database/shop.sql").rdbuf();
            PostgresServer::shared().create("shop", sql.str());
            return true;
        }();
        EXPECT_TRUE(isMade);
        return PostgresServer::shared();
    }

    static ImportedDatabase importShop(ImportedDatabase::Options const& options = {}) {
        return ImportedDatabase(server().connectionTo("shop"), options);
    }
};

// The expected views, by hand. PUBLIC reads public.notice, so everybody does.
std::vector<std::string> const seenByPublic{"schema:[public]", "table:[public].[notice]",
                                            "column:[public].[notice].[id]",
                                            "column:[public].[notice].[said]"};

// Two columns of customer.
std::vector<std::string> const readerInSales{"schema:[sales]", "table:[sales].[customer]",
                                             "column:[sales].[customer].[id]",
                                             "column:[sales].[customer].[name]"};

// What readers see, the orders, and the way from these to the customers, whose end is seen.
std::vector<std::string> const clerkInSales{
    "schema:[sales]",
    "table:[sales].[customer]",
    "column:[sales].[customer].[id]",
    "column:[sales].[customer].[name]",
    "table:[sales].[order]",
    "column:[sales].[order].[id]",
    "column:[sales].[order].[customer_id]",
    "column:[sales].[order].[placed]",
    "column:[sales].[order].[state]",
    "column:[sales].[order].[total]",
    "relationship:[sales].[order].[customer_id].[sales].[customer].[id]"};

std::vector<std::string> together(std::vector<std::string> ids,
                                  std::vector<std::string> const& more) {
    ids.insert(ids.end(), more.begin(), more.end());
    return ids;
}

TEST_F(PostgresImport, ShowsEachRoleWhatItMayRead) {
    ImportedDatabase const imported = importShop();
    ASSERT_TRUE(imported.isWritten()) << imported.errors();
    EXPECT_EQ(imported.seenBy("public"), seenByPublic);
    EXPECT_EQ(imported.seenBy("reader"), together(seenByPublic, readerInSales));
    EXPECT_EQ(imported.seenBy("clerk"), together(seenByPublic, clerkInSales));
}

TEST_F(PostgresImport, GivesUsersTheRolesThatTheyInherit) {
    ImportedDatabase const imported = importShop();
    // ann sees what clerks see, who see what readers see; a column was granted to carl himself.
    EXPECT_THAT(imported.rolesOf("ann"), ElementsAre("reader", "clerk"));
    EXPECT_THAT(imported.seenBy("ann"), IsEmpty());
    EXPECT_THAT(imported.rolesOf("carl"), ElementsAre("carl"));
    auto withCredit = together(seenByPublic, clerkInSales);
    withCredit.insert(withCredit.begin() + 8, "column:[sales].[customer].[credit]");
    EXPECT_EQ(imported.seenBy("carl"), withCredit);
}

TEST_F(PostgresImport, GivesWhoInheritsNothingWhatEverybodySees) {
    ImportedDatabase const imported = importShop();
    EXPECT_THAT(imported.rolesOf("bob"), ElementsAre("public"));
    EXPECT_THAT(imported.reasonFor("membership", "bob: clerk"), HasSubstr("not inherited"));
}

TEST_F(PostgresImport, ShowsOwnersTheirTablesAndSuperusersEverything) {
    ImportedDatabase const imported = importShop();
    EXPECT_EQ(imported.seenBy("keeper"),
              together(seenByPublic,
                       {"schema:[sales]", "table:[sales].[note]",
                        "column:[sales].[note].[order_id]", "column:[sales].[note].[text]]]"}));
    EXPECT_THAT(imported.rolesOf("olga"), ElementsAre("keeper"));
    EXPECT_THAT(imported.seenBy("boss"),
                IsSupersetOf({"table:[vault].[salary]", "table:[sales].[note]",
                              "column:[sales].[customer].[tags]",
                              "relationship:[sales].[note].[order_id].[sales].[order].[id]"}));
    EXPECT_EQ(imported.seenBy("auditor"), imported.seenBy("boss"));
}

TEST_F(PostgresImport, ShowsNothingInASchemaThatMayNotBeUsed) {
    ImportedDatabase const imported = importShop();
    // The table is granted to outsiders, the schema to insider alone, who is one of them.
    EXPECT_EQ(imported.seenBy("outsider"), seenByPublic);
    EXPECT_EQ(imported.seenBy("insider"),
              together(seenByPublic,
                       {"schema:[vault]", "table:[vault].[salary]", "column:[vault].[salary].[id]",
                        "column:[vault].[salary].[name]", "column:[vault].[salary].[amount]"}));
    EXPECT_THAT(imported.notes(), Contains(StartsWith("grants to read in schemas that the role "
                                                      "itself may not use: 1;")));
}

TEST_F(PostgresImport, ShowsAViewToWhomItIsGrantedWhateverItReads) {
    ImportedDatabase const imported = importShop();
    EXPECT_EQ(imported.seenBy("dunning"),
              together(seenByPublic,
                       {"schema:[sales]", "table:[sales].[debtors]",
                        "column:[sales].[debtors].[id]", "column:[sales].[debtors].[name]"}));
}

TEST_F(PostgresImport, ShowsNothingToWhoMayNotConnect) {
    ImportedDatabase const imported = importShop();
    EXPECT_THAT(imported.reasonFor("role", "stranger"), HasSubstr("may not connect"));
    EXPECT_THAT(imported.rolesOf("stranger"), ElementsAre("stranger"));
    EXPECT_THAT(imported.seenBy("stranger"), IsEmpty());
}

TEST_F(PostgresImport, MixesUpNoRolesWhoseNamesDifferInWhiteSpace) {
    ImportedDatabase const imported = importShop();
    EXPECT_THAT(imported.reasonFor("role", " ann"), HasSubstr("white space"));
    EXPECT_THAT(imported.rolesOf(" ann"), IsEmpty());
}

TEST_F(PostgresImport, MakesObjectsWithTypesKeysAndComments) {
    ImportedDatabase const imported = importShop();
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(
  <namespace id="schema:[sales]" name="sales" description="What is sold">
    <querySubject id="table:[sales].[customer]" name="customer" tableType="table" description="Who buys&#10;&quot;here&quot; 😀">
      <queryItem id="column:[sales].[customer].[id]" name="id" datatype="int64" usage="identifier" sqlType="bigint" nullable="false"/>
      <queryItem id="column:[sales].[customer].[name]" name="name" datatype="string" usage="attribute" sqlType="character varying(40)" nullable="false"/>
      <queryItem id="column:[sales].[customer].[credit]" name="credit" datatype="decimal" usage="fact" sqlType="sales.price" nullable="true" description="What we lend"/>
      <queryItem id="column:[sales].[customer].[tags]" name="tags" usage="attribute" sqlType="text[]" nullable="true"/>
    </querySubject>
)xml"));
    for (
        char const* const part :
        {R"(name="placed" datatype="dateTime" usage="attribute" sqlType="timestamp with time zone" nullable="false")",
         R"(name="state" datatype="string" usage="attribute" sqlType="sales.state")",
         R"(name="total" datatype="decimal" usage="fact" sqlType="money")",
         R"(name="customer_id" datatype="int64" usage="identifier")",
         R"(name="debtors" tableType="view")", R"(name="totals" tableType="materialized view")",
         R"(name="order.customer_id → customer.id" left="[sales].[order]" leftCardinality="0..n" right="[sales].[customer]" rightCardinality="0..1" expression="[sales].[order].[customer_id] = [sales].[customer].[id]")",
         R"(name="note.order_id → order.id" left="[sales].[note]" leftCardinality="0..1" right="[sales].[order]" rightCardinality="1..1")"}) {
        EXPECT_THAT(imported.model(), HasSubstr(part));
    }
    EXPECT_THAT(imported.model(), HasSubstr("name=\"reader\" description=\"Reads names\""));
}

TEST_F(PostgresImport, TellsOfEverythingThatItLeavesOut) {
    ImportedDatabase const imported = importShop();
    EXPECT_THAT(imported.reasonFor("schema", "pg_catalog"), HasSubstr("system's own"));
    EXPECT_THAT(imported.reasonFor("schema", "empty"), HasSubstr("no table"));
    EXPECT_THAT(imported.reasonFor("partition", "sales.log_1"), HasSubstr("imported whole"));
    EXPECT_THAT(imported.reasonFor("view.definition", "sales.debtors"), HasSubstr("a query"));
    EXPECT_THAT(imported.reasonFor("table.row-level security", "sales.order"), HasSubstr("rows"));
    EXPECT_THAT(imported.reasonFor("row-level policy", "mine"), HasSubstr("rows"));
    for (char const* const kind : {"index", "type", "check", "column.default", "grant"}) {
        EXPECT_GT(imported.account().readOf(kind), imported.account().mappedOf(kind)) << kind;
    }
    // Granted: two columns to reader, a table to clerk, a column to carl, a table to outsider,
    // one to PUBLIC and one to dunning; two ways of writing to writer.
    EXPECT_EQ(imported.account().mappedOf("grant"), 7U);
    EXPECT_EQ(imported.account().readOf("grant"), 9U);
}

TEST_F(PostgresImport, LeavesOutRolesThatMayReadNothing) {
    server().create("bare", "CREATE TABLE t (a int);");
    ImportedDatabase const imported(server().connectionTo("bare"));
    ASSERT_TRUE(imported.isWritten()) << imported.errors();
    EXPECT_THAT(imported.reasonFor("role", "ann"), HasSubstr("may read no table"));
    EXPECT_THAT(imported.reasonFor("role", "bob"), HasSubstr("may read no table"));
    EXPECT_THAT(imported.rolesOf("bob"), ElementsAre("bob"));
    EXPECT_THAT(imported.catalogue(), Not(HasSubstr("grant role=\"bob\"")));
}

TEST_F(PostgresImport, LeavesOutTextsThatNoDocumentCanHold) {
    server().create("odd", R"(
CREATE TABLE t (a int, " " int); CREATE TABLE u (U&"b\0001" int, c int);
CREATE TABLE U&"v\0001" (a int);
COMMENT ON TABLE t IS E'rings\x07';
)");
    ImportedDatabase const imported(server().connectionTo("odd"));
    ASSERT_TRUE(imported.isWritten()) << imported.errors();
    EXPECT_THAT(imported.seenBy("boss"),
                ElementsAre("schema:[public]", "table:[public].[t]", "column:[public].[t].[a]",
                            "table:[public].[u]", "column:[public].[u].[c]"));
    EXPECT_THAT(imported.reasonFor("column", "u.b\x01"), HasSubstr("no document can hold"));
    EXPECT_THAT(imported.reasonFor("column", "t. "), HasSubstr("no name"));
    EXPECT_THAT(imported.reasonFor("table", "public.v\x01"), HasSubstr("no document can hold"));
    EXPECT_THAT(imported.reasonFor("table.description", "[public].[t]"),
                HasSubstr("no document can hold"));
}

// Tables and keys that others made.
TEST_F(PostgresImport, BringsInAPublicDatabase) {
    std::ostringstream sql;
    sql << std::ifstream(VEX_SOURCE_DIR "/tests/host/import/database/models/chinook.postgresql.sql")
               .rdbuf();
    server().create("chinook", sql.str());
    ImportedDatabase const imported(server().connectionTo("chinook"));
    ASSERT_TRUE(imported.isWritten()) << imported.errors();
    EXPECT_EQ(imported.account().mappedOf("table"), 11U);
    EXPECT_EQ(imported.account().mappedOf("column"), 64U);
    EXPECT_EQ(imported.account().mappedOf("foreign key"), 11U);
    EXPECT_THAT(imported.model(),
                HasSubstr(R"(name="employee.reports_to → employee.employee_id")"));
    EXPECT_THAT(
        imported.model(),
        HasSubstr(
            R"xml(name="total" datatype="decimal" usage="fact" sqlType="numeric(10,2)" nullable="false")xml"));
}

TEST_F(PostgresImport, TakesSchemasAndTablesAsTheOptionsSay) {
    ImportedDatabase const imported =
        importShop({{"schema", {"s*"}}, {"exclude", {"sales.cust*"}}});
    EXPECT_THAT(imported.reasonFor("schema", "vault"), HasSubstr("--schema"));
    EXPECT_THAT(imported.reasonFor("table", "sales.customer"), HasSubstr("--exclude"));
    EXPECT_THAT(imported.reasonFor("foreign key", "order_customer_id_fkey"),
                HasSubstr("not imported"));
    EXPECT_THAT(imported.seenBy("insider"), IsEmpty());
    EXPECT_THAT(imported.seenBy("clerk"), Contains("table:[sales].[order]"));
    ImportedDatabase const refused = importShop({{"schema", {"Sales"}}});
    EXPECT_THAT(refused.errors(), HasSubstr("--schema \"Sales\" matches no schema"));
}

TEST_F(PostgresImport, TakesAPasswordThatNoMessageRepeats) {
    std::string const connection = server().connectionTo("shop", "locked");
    std::string const password = "ge;he}im \"100%+\" x";
    std::string const written = "ge;he}}im \"100%+\" x";
    std::filesystem::path const file =
        std::filesystem::temp_directory_path() / ("vex-password-" + std::to_string(::getpid()));
    std::ofstream(file) << password << "\nanother line\n";
    ImportedDatabase const fromFile(connection, {{"password-file", {file.string()}}});
    EXPECT_TRUE(fromFile.isWritten()) << fromFile.errors();
    // Who may read no table sees as much of the catalogue.
    EXPECT_EQ(fromFile.model(), importShop().model());
    ImportedDatabase const fromText(connection + ";PWD={" + written + "}");
    EXPECT_TRUE(fromText.isWritten()) << fromText.errors();
    EXPECT_THAT(fromText.notes(), Contains(HasSubstr("stood in the command line")));
    for (ImportedDatabase const* const each : {&fromFile, &fromText}) {
        EXPECT_THAT(each->model() + each->catalogue(), Not(HasSubstr("100%")));
    }
    ImportedDatabase const twice(connection + ";PWD=x", {{"password-file", {file.string()}}});
    EXPECT_THAT(twice.errors(), HasSubstr("two passwords"));
    ::setenv("VEXMA_DATABASE_PASSWORD", password.c_str(), 1);
    ImportedDatabase const fromEnvironment(connection);
    ::unsetenv("VEXMA_DATABASE_PASSWORD");
    EXPECT_TRUE(fromEnvironment.isWritten()) << fromEnvironment.errors();
    std::filesystem::remove(file);
    ImportedDatabase const without(connection);
    EXPECT_FALSE(without.isWritten());
    ImportedDatabase const wrong(connection + ";PWD=versteckt");
    EXPECT_THAT(wrong.errors(), HasSubstr("password authentication failed"));
    EXPECT_THAT(wrong.errors(), Not(HasSubstr("versteckt")));
    EXPECT_THAT(wrong.errors(), HasSubstr("UID=locked;PWD=..."));
}

TEST_F(PostgresImport, RefusesADatabaseAndAServerThatAreNotThere) {
    ImportedDatabase const none(server().connectionTo("none"));
    EXPECT_FALSE(none.isWritten());
    EXPECT_THAT(none.errors(), HasSubstr("database \"none\" does not exist"));
    ImportedDatabase const nowhere(
        "Driver=PostgreSQL Unicode;Servername=/nowhere;Database=x;UID=boss");
    EXPECT_THAT(nowhere.errors(), HasSubstr("cannot be reached"));
}

TEST_F(PostgresImport, TrustsNoFunctionsOfTheDatabase) {
    PostgresServer& databases = server();
    databases.create("trap", R"(
CREATE TABLE t (a int);
CREATE FUNCTION public.has_table_privilege(oid, oid, text) RETURNS boolean
  LANGUAGE sql AS 'SELECT true';
ALTER DATABASE trap SET search_path = public, pg_catalog;
)");
    ImportedDatabase const imported(databases.connectionTo("trap"));
    EXPECT_THAT(imported.seenBy("boss"), Contains("table:[public].[t]"));
    EXPECT_THAT(imported.seenBy("public"), IsEmpty());
}

TEST_F(PostgresImport, EndsAtItsLimits) {
    vex::ImportLimits limits;
    limits.viewEntries = 100;
    ImportedDatabase const many(server().connectionTo("shop"), {}, limits);
    EXPECT_THAT(many.errors(), HasSubstr("more than 100 times"));
}

TEST_F(PostgresImport, EndsAtItsDeadline) {
    std::string const connection = server().connectionTo("shop");
    vex::Budget const budget({.deadline = std::chrono::steady_clock::time_point()});
    EXPECT_THROW(ImportedDatabase{connection}, KRLLimitException);
}

} // namespace
