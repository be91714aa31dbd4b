#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string const payroll = std::string(VEX_SOURCE_DIR) + "/samples/import/payroll.bim";

std::string modelOfOthers(char const* name) {
    return std::string(VEX_SOURCE_DIR) + "/tests/host/import/tabular/models/" + name + ".bim";
}

std::vector<std::string> treeAs(std::string const& name, std::string const& user,
                                std::vector<std::string> const& more = {}) {
    std::vector<std::string> arguments{
        "tree",   "--catalog", "made/" + name + ".catalog.xml", "--model", "/content/" + name,
        "--user", user};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

// What each role sees, by hand: clerks may not see the column Salary, so not what is computed
// from it (Yearly, Total Pay, Pay per Hour, and Pay Index, which names that) and not the
// hierarchy whose only level it is.
constexpr char const* seenByClerks = R"(folder Payroll
├── querySubject Employees
│   ├── queryItem Number
│   ├── queryItem Name
│   ├── queryItem Department
│   ├── queryItem Head Count
│   ├── queryItemFolder Pay
│   │   ├── queryItem Grade
│   │   └── queryItemFolder Hourly
│   │       ├── queryItem Rate [EUR]
│   │       └── queryItem Average Rate
│   └── hierarchy By Grade
│       ├── level Department
│       └── level Grade
├── querySubject Work
│   ├── queryItem Employee
│   ├── queryItem Hours
│   ├── queryItem Total Hours
│   └── queryItem Hours per Head
└── relationship Work.Employee → Employees.Number
)";

// Planners may not see the table Employees: neither what counts its rows, nor the relationship
// to it.
constexpr char const* seenByPlanners = R"(folder Payroll
└── querySubject Work
    ├── queryItem Employee
    ├── queryItem Hours
    └── queryItem Total Hours
)";

constexpr char const* seenByPersonnelInGerman = R"(folder Löhne
├── querySubject Beschäftigte
│   ├── queryItem Number
│   ├── queryItem Name
│   ├── queryItem Department
│   ├── queryItem Köpfe
│   ├── queryItemFolder Lohn
│   │   ├── queryItem Grade
│   │   ├── queryItem Gehalt
│   │   ├── queryItem Yearly
│   │   ├── queryItem Total Pay
│   │   └── queryItemFolder Je Stunde
│   │       ├── queryItem Satz [EUR]
│   │       └── queryItem Average Rate
│   ├── hierarchy Nach Stufe
│   │   ├── level Department
│   │   └── level Stufe
│   └── hierarchy By Salary
│       └── level Monthly
├── querySubject Arbeit
│   ├── queryItem Employee
│   ├── queryItem Hours
│   ├── queryItem Stunden gesamt
│   ├── queryItem Pay per Hour
│   ├── queryItem Pay Index
│   └── queryItem Hours per Head
└── relationship Work.Employee → Employees.Number
)";

TEST(Import, ShowsEachRoleWhatItsPermissionsLeave) {
    ToolFolder const folder;
    ToolResult const imported = folder.Run({"import", "tabular", payroll, "-o", "made"});
    ASSERT_EQ(imported.status, 0) << imported.error;
    EXPECT_THAT(imported.error, IsEmpty());
    EXPECT_EQ(folder.Run(treeAs("payroll", "carl@example.org")).out, seenByClerks);
    EXPECT_EQ(folder.Run(treeAs("payroll", "cleo@example.org")).out, seenByClerks);
    EXPECT_EQ(folder.Run(treeAs("payroll", "pia@example.org")).out, seenByPlanners);
    EXPECT_EQ(folder.Run(treeAs("payroll", "robot@example.org")).status, 1);
    EXPECT_EQ(folder.Run(treeAs("payroll", "paula@example.org", {"--locale", "de_DE"})).out,
              seenByPersonnelInGerman);
}

TEST(Import, LeaksNothing) {
    ToolFolder const folder;
    folder.Run({"import", "tabular", payroll, "-o", "made"});
    ToolResult const verified = folder.Run(
        {"verify", "--catalog", "made/payroll.catalog.xml", "--model", "/content/payroll"});
    EXPECT_THAT(verified.out, HasSubstr("compared for 4 of 5 users: 0 leaks"));
}

TEST(Import, IsAcceptedByTheCheckAndAnswersSomebody) {
    struct Case {
        char const* name;
        char const* user;
        char const* shown;
    };
    for (Case const& each :
         {Case{"AdventureWorks", "Users", "│   ├── queryItem Internet Total Sales\n"},
          Case{"NewDeserializer", "owner", "    └── hierarchy Hierarchy\n"}}) {
        ToolFolder const folder;
        ToolResult const imported =
            folder.Run({"import", "tabular", modelOfOthers(each.name), "-o", "made"});
        ASSERT_EQ(imported.status, 0) << imported.error;
        std::string const catalogue = "made/" + std::string(each.name) + ".catalog.xml";
        ToolResult const checked = folder.Run({"validate", catalogue});
        EXPECT_EQ(checked.status, 0) << checked.out;
        EXPECT_THAT(checked.out, Not(HasSubstr("error:")));
        ToolResult const tree = folder.Run(treeAs(each.name, each.user));
        EXPECT_EQ(tree.status, 0) << tree.error;
        EXPECT_THAT(tree.out, HasSubstr(each.shown));
    }
}

constexpr char const* before = R"({"model":{"culture":"en","tables":[{"name":"T","columns":[
    {"name":"A"},{"name":"B","lineageTag":"b-1"},{"name":"C"}]}]}})";
constexpr char const* after = R"({"model":{"culture":"en","tables":[{"name":"T","columns":[
    {"name":"New"},{"name":"A","displayFolder":"F"},{"name":"Renamed","lineageTag":"b-1"}]}]}})";

TEST(Import, TwiceGivesTheSameThingsTheSameIdsSoThatDiffSaysWhatChanged) {
    ToolFolder const folder;
    folder.Write("before/t.bim", before);
    folder.Write("after/t.bim", after);
    folder.Run({"import", "tabular", "before/t.bim", "-o", "old"});
    folder.Run({"import", "tabular", "after/t.bim", "-o", "new"});
    ToolResult const same = folder.Run({"import", "tabular", "before/t.bim", "-o", "again"});
    ASSERT_EQ(same.status, 0);
    EXPECT_EQ(folder.RunShell("cmp old/t.model.xml again/t.model.xml").status, 0);
    ToolResult const changed = folder.Run({"diff", "old/t.model.xml", "new/t.model.xml"});
    EXPECT_EQ(changed.out,
              R"(- the view view:everything Everything includes the queryItem "C" (column:[T].[C])
+ the view view:everything Everything includes the queryItem "New" (column:[T].[New])
+ the view view:everything Everything includes the queryItemFolder "F" (folder:[T].[F])
  model (model)
  └── namespace "t" (model:model)
      └── querySubject "T" (table:[T])
+         ├── queryItem "New" (column:[T].[New])
+         ├── queryItemFolder "F" (folder:[T].[F])
~         │   └── queryItem "A" (column:[T].[A])  container "table:[T]" -> "folder:[T].[F]"
~         ├── queryItem "Renamed" (column:b-1)  name "B" -> "Renamed"
-         └── queryItem "C" (column:[T].[C])
2 appear, 1 disappear, 2 change, 1 of them renamed
)");
}

TEST(Import, OfAServiceIsAcceptedByTheCheckAndDiffTellsWhatChanged) {
    ToolFolder const folder;
    std::string const library = std::string(VEX_SOURCE_DIR) + "/samples/import/library.csdl.xml";
    for (char const* const navigation : {"shortcut", "relationship"}) {
        ASSERT_EQ(folder
                      .Run({"import", "odata", library, "--name", "library", "-o", "made",
                            "--navigation", navigation})
                      .status,
                  0);
        ToolResult const checked = folder.Run({"validate", "made/library.catalog.xml"});
        EXPECT_EQ(checked.status, 0) << checked.out;
        EXPECT_THAT(checked.out, Not(HasSubstr("error:")));
        EXPECT_THAT(folder.Run(treeAs("library", "owner")).out,
                    HasSubstr("│   ├── querySubject Books\n"));
    }
    folder.RunShell("sed 's/Name=\"Street\"/Name=\"Road\"/' '" + library + "' > library.xml");
    folder.Run({"import", "odata", "library.xml", "-o", "new"});
    ToolResult const changed =
        folder.Run({"diff", "made/library.model.xml", "new/library.model.xml"});
    EXPECT_THAT(changed.out, HasSubstr("1 appear, 1 disappear, 0 change"));
}

TEST(Import, TakesOptionsOfItsKindOnly) {
    ToolFolder const folder;
    EXPECT_EQ(
        folder.Run({"import", "tabular", payroll, "-o", "made", "--navigation", "shortcut"}).status,
        2);
}

TEST(Import, WritesTheAccountAsJson) {
    ToolFolder const folder;
    ToolResult const result =
        folder.Run({"import", "tabular", payroll, "-o", "made", "--report", "-"});
    nlohmann::json const report = nlohmann::json::parse(result.out);
    EXPECT_EQ(report["kind"], "tabular");
    EXPECT_EQ(report["written"],
              nlohmann::json({"made/payroll.model.xml", "made/payroll.catalog.xml"}));
    std::size_t read = 0;
    std::size_t leftOut = 0;
    for (auto const& row : report["read"]) {
        EXPECT_EQ(row["read"].get<int>(), row["mapped"].get<int>() + row["leftOut"].get<int>());
        read += row["read"].get<std::size_t>();
        leftOut += row["leftOut"].get<std::size_t>();
    }
    std::size_t told = 0;
    for (auto const& omission : report["leftOut"]) {
        told += omission["count"].get<std::size_t>();
        EXPECT_FALSE(omission["reason"].get<std::string>().empty());
        EXPECT_GT(omission["places"][0]["line"].get<int>(), 0) << omission;
    }
    EXPECT_GT(read, 100U);
    EXPECT_EQ(told, leftOut);
}

TEST(Import, WritesNothingWhenTheSourceCannotBeUsed) {
    ToolFolder const folder;
    folder.Write("bad.bim", "{\"model\":{\n\"tables\":[{}]}}");
    ToolResult const result =
        folder.Run({"import", "tabular", "bad.bim", "-o", "made", "--report", "report.json"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("bad.bim:2:11: error: the table has no \"name\""));
    EXPECT_THAT(result.error, HasSubstr("nothing was written"));
    EXPECT_NE(folder.RunShell("test -e made -o -e report.json").status, 0);
    EXPECT_EQ(folder.Run({"import", "tabular", "none.bim", "-o", "made"}).status, 3);
}

TEST(Import, LeavesWhatIsThereWhenItCannotWrite) {
    ToolFolder const folder;
    folder.Run({"import", "tabular", payroll, "-o", "made"});
    folder.RunShell("rm made/payroll.catalog.xml && mkdir made/payroll.catalog.xml && "
                    "echo old > made/payroll.model.xml");
    ToolResult const result = folder.Run({"import", "tabular", payroll, "-o", "made"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("made/payroll.catalog.xml: cannot be written"));
    EXPECT_EQ(folder.RunShell("cat made/payroll.model.xml; ls -A made | wc -l").out, "old\n2\n");
}

TEST(Import, ReadsStandardInputUnderANameThatIsGiven) {
    ToolFolder const folder;
    std::string const model = R"({"model":{"tables":[{"name":"T"}]}})";
    EXPECT_EQ(folder.Run({"import", "tabular", "-", "-o", "made"}, model).status, 2);
    EXPECT_EQ(folder.Run({"import", "tabular", "-", "-o", "made", "--name", "t"}, model).status, 0);
    EXPECT_EQ(folder.Run({"validate", "made/t.catalog.xml"}).status, 0);
}

TEST(Import, RefusesNamesLocalesAndKindsThatCannotBe) {
    ToolFolder const folder;
    EXPECT_EQ(folder.Run({"import", "tabular", payroll, "-o", "made", "--name", "../x"}).status, 2);
    EXPECT_EQ(folder.Run({"import", "tabular", payroll, "-o", "made", "--locale", "xx"}).status, 2);
    EXPECT_EQ(folder.Run({"import", "xml", payroll, "-o", "made"}).status, 2);
    EXPECT_EQ(folder.Run({"import", "tabular", payroll}).status, 2);
}

} // namespace
