#include "tests/apps/vexma/ToolRun.h"
#include "tests/host/import/database/ImportedDatabase.h"
#include "tests/host/import/database/PostgresServer.h"

#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

class DatabaseCommand : public DatabaseTest<PostgresServer> {};
class SqliteCommand : public DatabaseTest<SqliteFile> {};

std::vector<std::string> importOf(std::string const& connection,
                                  std::vector<std::string> const& more = {}) {
    std::vector<std::string> arguments{"import", "database", connection, "--name", "shop"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

TEST_F(DatabaseCommand, WritesWhatTheCheckAcceptsAndTreesAnswer) {
    PostgresServer& server = PostgresServer::shared();
    server.create("small", R"(
CREATE ROLE small_group; CREATE ROLE small_user LOGIN; GRANT small_group TO small_user;
CREATE TABLE city (id int PRIMARY KEY, name text, secret int);
CREATE TABLE street (id int PRIMARY KEY, city int NOT NULL REFERENCES city);
GRANT SELECT (id, name) ON city TO small_group; GRANT SELECT ON street TO small_group;
)");
    ToolFolder const folder;
    ToolResult const imported = folder.Run(importOf(server.connectionTo("small"), {"-o", "made"}));
    ASSERT_EQ(imported.status, 0) << imported.error;
    ToolResult const checked = folder.Run({"validate", "made/shop.catalog.xml"});
    EXPECT_EQ(checked.status, 0) << checked.out << checked.error;
    EXPECT_THAT(checked.out, Not(HasSubstr("error:")));
    std::vector<std::string> const made{"--catalog", "made/shop.catalog.xml", "--model",
                                        "/content/shop"};
    auto const asked = [&](std::vector<std::string> arguments, std::string const& user) {
        arguments.insert(arguments.end(), made.begin(), made.end());
        arguments.insert(arguments.end(), {"--user", user});
        return folder.Run(arguments);
    };
    EXPECT_EQ(asked({"tree"}, "small_user").out, R"(folder public
├── querySubject city
│   ├── queryItem id
│   └── queryItem name
├── querySubject street
│   ├── queryItem id
│   └── queryItem city
└── relationship street.city → city.id
)");
    EXPECT_THAT(
        folder.Run({"verify", "--catalog", "made/shop.catalog.xml", "--model", "/content/shop"})
            .out,
        HasSubstr(" 0 leaks, 0 shown past the views, 0 unexplained differences"));
}

std::string textOf(std::string const& name) {
    std::ostringstream text;
    text << std::ifstream(VEX_SOURCE_DIR "/docs/examples/database/" + name).rdbuf();
    return text.str();
}

TEST_F(DatabaseCommand, ShowsWhatTheDocumentationSays) {
    PostgresServer& server = PostgresServer::shared();
    server.create("rental", textOf("rental.sql"));
    ToolFolder const folder;
    ASSERT_EQ(folder.Run(importOf(server.connectionTo("rental"), {"-o", "made"})).status, 0);
    for (std::string const user : {"anna", "max"}) {
        EXPECT_EQ(folder
                      .Run({"tree", "--catalog", "made/shop.catalog.xml", "--model",
                            "/content/shop", "--user", user})
                      .out,
                  textOf(user + ".txt"));
    }
}

TEST_F(SqliteCommand, TwiceGivesTheSameThingsTheSameIdsSoThatDiffSaysWhatChanged) {
    SqliteFile const before("CREATE TABLE t (a INT, c INT); CREATE TABLE u (a INT);");
    SqliteFile const after("CREATE TABLE u (a INT); CREATE TABLE t (a INT, b INT, c INT);");
    ToolFolder const folder;
    ASSERT_EQ(folder.Run(importOf(before.connection(), {"-o", "old"})).status, 0);
    ASSERT_EQ(folder.Run(importOf(before.connection(), {"-o", "again"})).status, 0);
    ASSERT_EQ(folder.Run(importOf(after.connection(), {"-o", "new"})).status, 0);
    EXPECT_EQ(folder.RunShell("cmp old/shop.model.xml again/shop.model.xml").status, 0);
    EXPECT_EQ(
        folder.Run({"diff", "old/shop.model.xml", "new/shop.model.xml"}).out,
        R"(+ the view view:everything Everything includes the queryItem "b" (column:[main].[t].[b])
  model (model)
  └── namespace "main" (schema:[main])
      └── querySubject "t" (table:[main].[t])
+         └── queryItem "b" (column:[main].[t].[b])
1 appear, 0 disappear, 0 change, 0 of them renamed
)");
}

TEST_F(SqliteCommand, ReadsTheConnectionStringFromStandardInput) {
    SqliteFile const file("CREATE TABLE t (a INT);");
    ToolFolder const folder;
    EXPECT_EQ(folder.Run(importOf("-", {"-o", "made"}), file.connection() + "\n").status, 0);
}

TEST_F(SqliteCommand, ShowsNothingSecretInItsReport) {
    SqliteFile const file("CREATE TABLE t (a INT);");
    ToolFolder const folder;
    ToolResult const imported = folder.Run(
        importOf(file.connection() + ";PWD=geheim;Note=versteckt", {"-o", "m", "--report", "-"}));
    EXPECT_EQ(imported.status, 0) << imported.error;
    EXPECT_THAT(imported.out, HasSubstr(";PWD=...;Note=...\""));
    ToolResult const everything = folder.RunShell("cat m/*");
    for (std::string const& text : {imported.out, imported.error, everything.out}) {
        EXPECT_THAT(text, Not(HasSubstr("geheim")));
        EXPECT_THAT(text, Not(HasSubstr("versteckt")));
    }
}

TEST_F(SqliteCommand, EndsAtItsDeadlineAndWritesNothing) {
    SqliteFile const file("CREATE TABLE t (a INT);");
    ToolFolder const folder;
    // Over before anything is asked.
    ToolResult const result =
        folder.Run(importOf(file.connection(), {"-o", "made", "--deadline", "0.000001"}));
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("the import takes longer than --deadline allows, and "
                                        "nothing was written"));
    EXPECT_EQ(folder.RunShell("ls made 2>/dev/null").out, "");
}

TEST(DatabaseCommandLine, WritesNothingWhenNothingCanBeReached) {
    ToolFolder const folder;
    ToolResult const result = folder.Run(
        importOf("Driver=none of these;PWD=geheim", {"-o", "made", "--report", "report.json"}));
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("Driver=none of these;PWD=...: error: the database cannot "
                                        "be reached: "));
    EXPECT_THAT(result.error, HasSubstr("the driver \"none of these\" is not installed"));
    EXPECT_THAT(result.error, HasSubstr("nothing was written"));
    EXPECT_THAT(result.error, Not(HasSubstr("geheim")));
    EXPECT_EQ(folder.RunShell("ls made report.json 2>/dev/null").out, "");
    ToolResult const malformed = folder.Run(importOf("UID=a;geheim", {"-o", "made"}));
    EXPECT_EQ(malformed.status, 3);
    EXPECT_THAT(malformed.error, HasSubstr("the connection string: error: "));
    EXPECT_THAT(malformed.error, Not(HasSubstr("geheim")));
}

} // namespace
