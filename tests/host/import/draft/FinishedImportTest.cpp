#include "tests/host/import/ImportedText.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

constexpr char const* oneTable = R"("columns":[{"name":"C"}])";

TEST(FinishedImport, GivesARoleThatNobodyHoldsAUserOfItsName) {
    auto const imported =
        ImportedText::ofTable(oneTable, R"("roles":[{"name":"Clerks","modelPermission":"read"}])");
    EXPECT_THAT(imported.catalogue(), HasSubstr("<user name=\"Clerks\">\n    <role>Clerks</role>"));
}

TEST(FinishedImport, LeavesThoseUsersOutWhenToldSo) {
    vex::ImportRequest request;
    request.hasStandIns = false;
    ImportedText const imported(
        R"({"model":{"tables":[{"name":"T"}],"roles":[{"name":"Clerks","modelPermission":"read"}]}})",
        request);
    EXPECT_THAT(imported.catalogue(), testing::Not(HasSubstr("user name=\"Clerks\"")));
}

TEST(FinishedImport, GivesNothingToAUserWhoHappensToBearTheNameOfARole) {
    auto const imported =
        ImportedText::ofTable(oneTable, R"("roles":[{"name":"ann","modelPermission":"read"},
                              {"name":"none","members":[{"memberName":"ann"}]}])");
    EXPECT_THAT(imported.catalogue(),
                HasSubstr("<user name=\"ann\">\n    <role>none</role>\n  </user>"));
}

TEST(FinishedImport, NamesAnOwnerWhereNobodyWouldSeeAnything) {
    auto const imported = ImportedText::ofTable(oneTable);
    EXPECT_THAT(imported.seenBy("owner"),
                testing::ElementsAre("model:model", "table:[T]", "column:[T].[C]"));
    EXPECT_THAT(imported.catalogue(), HasSubstr("<user name=\"owner\">"));
}

TEST(FinishedImport, GivesTheOwnersSightToNobodyOfTheSource) {
    auto const imported = ImportedText::ofTable(
        oneTable, R"("roles":[{"name":"owner","members":[{"memberName":"owner 2"}]}])");
    EXPECT_THAT(imported.seenBy("owner"), testing::IsEmpty());
    EXPECT_THAT(imported.seenBy("owner 2"), testing::IsEmpty());
    EXPECT_THAT(imported.catalogue(), HasSubstr("<user name=\"owner 3\">"));
}

TEST(FinishedImport, NamesAnOwnerBesideOthersWhenAsked) {
    vex::ImportRequest request;
    request.owner = "me";
    ImportedText const imported(
        R"({"model":{"tables":[{"name":"T"}],"roles":[{"name":"r","modelPermission":"read"}]}})",
        request);
    EXPECT_THAT(imported.catalogue(), HasSubstr("<user name=\"me\">\n    <role>owner</role>"));
}

TEST(FinishedImport, TellsOfATextThatNoDocumentHoldsWhereItStands) {
    auto const imported = ImportedText::ofTable("\n\"columns\":[\n{\"name\":\"a\\u0001b\"}]");
    EXPECT_FALSE(imported.isWritten());
    EXPECT_THAT(imported.errors(),
                testing::Contains(HasSubstr("m.bim:3:1: error: a text holds U+0001")));
}

TEST(FinishedImport, TellsOfUsersThatNoCatalogueHolds) {
    auto const imported =
        ImportedText::ofTable(oneTable, R"("roles":[{"name":"r","modelPermission":"read",
                               "members":[{"memberName":"a\u0001"}]}])");
    EXPECT_FALSE(imported.isWritten());
    EXPECT_THAT(imported.errors(), testing::Contains(HasSubstr("make no catalogue")));
}

TEST(ImportName, IsOneThatFilesAndModelPathsCanBear) {
    for (char const* const name : {"sales", "Umsätze 2024", "a.b", "[x]"}) {
        EXPECT_TRUE(vex::canNameImport(name)) << name;
    }
    for (char const* const name : {"", ".", "..", ".x", "a/b", "a\\b", "a\nb", " a", "\xff"}) {
        EXPECT_FALSE(vex::canNameImport(name)) << name;
    }
}

} // namespace
