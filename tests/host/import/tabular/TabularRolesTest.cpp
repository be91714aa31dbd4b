#include "tests/host/import/ImportedText.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// A role "r" that may read, with these permissions.
std::string role(std::string const& permissions) {
    return R"("roles":[{"name":"r","modelPermission":"read","tablePermissions":[)" + permissions +
           "]}]";
}
std::string hidingColumn(std::string const& table, std::string const& column) {
    return R"({"name":")" + table + R"(","columnPermissions":[{"name":")" + column +
           R"(","metadataPermission":"none"}]})";
}
std::string hidingTable(std::string const& table) {
    return R"({"name":")" + table + R"(","metadataPermission":"none"})";
}

/// Tables T (columns A, B) and U (columns A, C), each with a measure.
ImportedText twoTables(std::string const& expression, std::string const& permissions) {
    return ImportedText(R"({"model":{"tables":[
        {"name":"T","columns":[{"name":"A"},{"name":"B"}],
         "measures":[{"name":"M","expression":")" +
                        expression + R"("},{"name":"N","expression":"[M] + 1"}]},
        {"name":"U","columns":[{"name":"A"},{"name":"C"}]}],)" +
                        role(permissions) + "}}");
}

bool showsMeasures(ImportedText const& imported) {
    auto const seen = imported.seenBy("r");
    bool const shows = std::find(seen.begin(), seen.end(), "measure:[T].[M]") != seen.end();
    bool const showsReader = std::find(seen.begin(), seen.end(), "measure:[T].[N]") != seen.end();
    EXPECT_EQ(shows, showsReader); // what names it goes with it
    return shows;
}

TEST(TabularRoles, SeeEverythingWithoutPermissions) {
    EXPECT_THAT(ImportedText::ofTable(R"("columns":[{"name":"A"}])", role("")).seenBy("r"),
                ElementsAre("model:model", "table:[T]", "column:[T].[A]"));
}

TEST(TabularRoles, DoNotSeeAHiddenColumn) {
    EXPECT_THAT(twoTables("1", hidingColumn("U", "A")).seenBy("r"),
                ElementsAre("model:model", "table:[T]", "column:[T].[A]", "column:[T].[B]",
                            "measure:[T].[M]", "measure:[T].[N]", "table:[U]", "column:[U].[C]"));
}

TEST(TabularRoles, DoNotSeeAHiddenTableWithAllThatIsInIt) {
    EXPECT_THAT(twoTables("1", hidingTable("T")).seenBy("r"),
                ElementsAre("model:model", "table:[U]", "column:[U].[A]", "column:[U].[C]"));
}

TEST(TabularRoles, DoNotSeeWhatNamesAHiddenColumnAndWhatNamesThat) {
    EXPECT_FALSE(showsMeasures(twoTables("SUM(U[A])", hidingColumn("U", "A"))));
    EXPECT_FALSE(showsMeasures(twoTables("SUM('u'[a])", hidingColumn("U", "A"))));
    EXPECT_TRUE(showsMeasures(twoTables("SUM(U[C])", hidingColumn("U", "A"))));
    EXPECT_TRUE(showsMeasures(twoTables("SUM(T[A])", hidingColumn("U", "A"))));
}

TEST(TabularRoles, AnUnqualifiedNameCountsAsEverythingThatItMayBe) {
    EXPECT_FALSE(showsMeasures(twoTables("SUMX(U, [A])", hidingColumn("U", "A"))));
    EXPECT_FALSE(showsMeasures(twoTables("SUMX(U, [A])", hidingColumn("T", "A"))));
    EXPECT_TRUE(showsMeasures(twoTables("SUMX(U, [B])", hidingColumn("U", "A"))));
}

TEST(TabularRoles, ANameOfAnUnknownTableCountsAsUnqualified) {
    EXPECT_FALSE(showsMeasures(twoTables("SUMX(v, v[A])", hidingColumn("U", "A"))));
    EXPECT_FALSE(showsMeasures(twoTables("SUMX(T, T[C])", hidingColumn("U", "C"))));
}

TEST(TabularRoles, DoNotSeeWhatNamesAHiddenTable) {
    EXPECT_FALSE(showsMeasures(twoTables("COUNTROWS(U)", hidingTable("U"))));
    EXPECT_FALSE(showsMeasures(twoTables("COUNTROWS('U')", hidingTable("U"))));
    EXPECT_FALSE(showsMeasures(twoTables("SUM(U[C])", hidingTable("U"))));
    EXPECT_FALSE(showsMeasures(twoTables("SUMX(FILTER(ALL(x), 1), [C])", hidingTable("U"))));
}

TEST(TabularRoles, DoNotSeeWhatNamesSomethingHiddenInAComment) {
    EXPECT_FALSE(showsMeasures(twoTables("1 // as U[A]", hidingColumn("U", "A"))));
}

TEST(TabularRoles, DoNotSeeWhatNamesSomethingHiddenThroughAFunction) {
    ImportedText const imported(R"({"model":{"tables":[
        {"name":"T","columns":[{"name":"A"}],"measures":[{"name":"M","expression":"Own.Sum(1) "}]}],
        "functions":[{"name":"Own.Sum","expression":"(x) => x + SUM(T[A]) "}],)" +
                                role(hidingColumn("T", "A")) + "}}");
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("model:model", "table:[T]"));
}

TEST(TabularRoles, DoNotSeeATableThatIsCalculatedFromAHiddenOne) {
    ImportedText const imported(R"({"model":{"tables":[
        {"name":"T","columns":[{"name":"A"}]},
        {"name":"D","columns":[{"name":"X"}],"partitions":[
            {"name":"p","source":{"type":"calculated","expression":"DISTINCT(T[A]) "}}]}],)" +
                                role(hidingColumn("T", "A")) + "}}");
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("model:model", "table:[T]"));
}

TEST(TabularRoles, DoNotSeeAColumnThatComesFromAHiddenOne) {
    ImportedText const imported(R"({"model":{"tables":[
        {"name":"T","columns":[{"name":"A"}]},
        {"name":"D","columns":[{"type":"calculatedTableColumn","name":"X","sourceColumn":"T[A]"}]}],)" +
                                role(hidingColumn("T", "A")) + "}}");
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("model:model", "table:[T]", "table:[D]"));
}

TEST(TabularRoles, DoNotSeeALevelOfAHiddenColumnNorAHierarchyWithoutLevels) {
    std::string const table = R"("columns":[{"name":"A"},{"name":"B"}],"hierarchies":[
        {"name":"H","levels":[{"name":"one","ordinal":0,"column":"a"}]},
        {"name":"I","levels":[{"name":"one","ordinal":0,"column":"A"},
                              {"name":"two","ordinal":1,"column":"B"}]}])";
    EXPECT_THAT(ImportedText::ofTable(table, role(hidingColumn("T", "A"))).seenBy("r"),
                ElementsAre("model:model", "table:[T]", "column:[T].[B]", "hierarchy:[T].[I]",
                            "level:[T].[I].[two]"));
}

TEST(TabularRoles, DoNotSeeAFolderWithNothingInIt) {
    std::string const table = R"("columns":[{"name":"A","displayFolder":"F\\G"},{"name":"B"}])";
    EXPECT_THAT(ImportedText::ofTable(table, role(hidingColumn("T", "A"))).seenBy("r"),
                ElementsAre("model:model", "table:[T]", "column:[T].[B]"));
}

TEST(TabularRoles, DoNotSeeARelationshipWithAHiddenEnd) {
    ImportedText const imported(R"({"model":{"tables":[
        {"name":"T","columns":[{"name":"A"}]},{"name":"U","columns":[{"name":"A"}]}],
        "relationships":[{"fromTable":"T","fromColumn":"A","toTable":"U","toColumn":"A"}],)" +
                                role(hidingColumn("U", "A")) + "}}");
    EXPECT_THAT(imported.seenBy("r"),
                ElementsAre("model:model", "table:[T]", "column:[T].[A]", "table:[U]"));
}

TEST(TabularRoles, SeeNothingUnlessTheyMayRead) {
    for (char const* const permission :
         {R"("modelPermission":"none",)", R"("modelPermission":"refresh",)", ""}) {
        auto const imported = ImportedText::ofTable(
            R"("columns":[{"name":"A"}])", R"("roles":[{"name":"r",)" + std::string(permission) +
                                               R"("members":[{"memberName":"ann"}]}])");
        EXPECT_THAT(imported.seenBy("r"), testing::IsEmpty()) << permission;
        EXPECT_EQ(imported.reasonFor("role"), "it may not read the model, so it sees nothing");
        EXPECT_THAT(imported.catalogue(), HasSubstr("user name=\"ann\""));
    }
}

TEST(TabularRoles, APermissionThatIsNotKnownHides) {
    auto const imported = ImportedText::ofTable(
        R"("columns":[{"name":"A"},{"name":"B"},{"name":"C"}])",
        role(R"({"name":"T","columnPermissions":[{"name":"A","metadataPermission":"nothing"},
            {"name":"B","metadataPermission":{}},{"name":"C","metadataPermission":"Read"}]})"));
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("model:model", "table:[T]", "column:[T].[C]"));
}

TEST(TabularRoles, APermissionForWhatTheModelLacksIsAnError) {
    auto const noColumn = ImportedText::ofTable(R"("columns":[{"name":"A"}])",
                                                role("\n" + hidingColumn("T", "Salray")));
    EXPECT_FALSE(noColumn.isWritten());
    EXPECT_THAT(noColumn.errors(), ElementsAre(HasSubstr("m.bim:2:")));
    EXPECT_THAT(noColumn.errors(), ElementsAre(HasSubstr("\"Salray\"")));
    EXPECT_FALSE(ImportedText::ofTable(R"("columns":[])", role(hidingTable("U"))).isWritten());
}

TEST(TabularRoles, HaveTheirMembersAsUsers) {
    auto const imported = ImportedText::ofTable(
        R"("columns":[{"name":"A"}])",
        R"("roles":[{"name":"r","modelPermission":"read","members":[{"memberName":"DOM\\ann"},
            {"memberId":"S-1-5"},{"identityProvider":"x"}]},
            {"name":"s","modelPermission":"read","members":[{"memberName":"DOM\\ann"}]}])");
    EXPECT_THAT(imported.catalogue(),
                HasSubstr("<user name=\"DOM\\ann\">\n    <role>r</role>\n    <role>s</role>"));
    EXPECT_THAT(imported.catalogue(), HasSubstr("<user name=\"S-1-5\">"));
    EXPECT_EQ(imported.reasonFor("member"), "it has no name");
}

TEST(TabularRoles, TellOfRowFiltersThatNoViewCanSay) {
    auto const imported = ImportedText::ofTable(
        R"("columns":[{"name":"A"}])", role(R"({"name":"T","filterExpression":"[A] = 1"})"));
    EXPECT_THAT(imported.reasonFor("row filter"), HasSubstr("not which rows"));
    EXPECT_THAT(imported.seenBy("r"), testing::Contains("column:[T].[A]"));
}

TEST(TabularRoles, HideWhatNamesATableThatIsNotMappedItself) {
    ImportedText const imported(R"({"model":{"tables":[
        {"name":"G","calculationGroup":{"calculationItems":[{"name":"YTD"}]},
         "columns":[{"name":"Shift"}]},
        {"name":"T","measures":[{"name":"M","expression":"SELECTEDVALUE(G[Shift]) "}]}],)" +
                                role(hidingTable("G")) + "}}");
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("model:model", "table:[T]"));
    EXPECT_THAT(imported.model(), testing::Not(HasSubstr("Shift\"")));
}

TEST(TabularRoles, AreRefusedWhenTheirViewsWouldGrowPastTheLimit) {
    vex::ImportRequest request;
    request.limits.viewEntries = 20;
    ImportedText const imported(
        R"({"model":{"tables":[{"name":"T","columns":[{"name":"A"},{"name":"B"},{"name":"C"}]}],
        "roles":[{"name":"r","modelPermission":"read"},{"name":"s","modelPermission":"read"},
        {"name":"t","modelPermission":"read"},{"name":"u","modelPermission":"read"}]}})",
        request);
    EXPECT_FALSE(imported.isWritten());
    EXPECT_THAT(imported.errors(), ElementsAre(HasSubstr("more than 20 times")));
}

} // namespace
