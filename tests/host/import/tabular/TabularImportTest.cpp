#include "host/import/kinds/ImportKinds.h"
#include "tests/host/import/ImportedText.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(TabularImport, MakesQueryItemsOfColumnsAndMeasures) {
    auto const imported = ImportedText::ofTable(
        R"("description":"All \"T\"","columns":[
            {"name":"Total","dataType":"decimal","formatString":"0.00","isHidden":true,
             "description":["two","lines"]}],
           "measures":[{"name":"Sum","expression":["SUM(","T[Total]",") "]}])");
    EXPECT_THAT(imported.model(), HasSubstr(R"(
    <querySubject id="table:[T]" name="T" description="All &quot;T&quot;">
      <queryItem id="column:[T].[Total]" name="Total" datatype="decimal" usage="fact" format="0.00" description="two&#10;lines" isHidden="true"/>
      <queryItem id="measure:[T].[Sum]" name="Sum" usage="fact" expression="SUM(&#10;T[Total]&#10;) "/>
    </querySubject>
)"));
}

TEST(TabularImport, TellsUsageByKeyTypeSummaryAndRelationships) {
    auto const imported = ImportedText::ofTable(
        R"("columns":[{"name":"key","dataType":"int64","isKey":true},
            {"name":"end","dataType":"int64"},{"name":"number","dataType":"double"},
            {"name":"left alone","dataType":"double","summarizeBy":"none"},
            {"name":"text","dataType":"string"}])",
        R"("relationships":[{"fromTable":"t","fromColumn":"END","toTable":"T","toColumn":"key"}])");
    for (char const* const item : {R"(name="key" datatype="int64" usage="identifier")",
                                   R"(name="end" datatype="int64" usage="identifier")",
                                   R"(name="number" datatype="double" usage="fact")",
                                   R"(name="left alone" datatype="double" usage="attribute")",
                                   R"(name="text" datatype="string" usage="attribute")"}) {
        EXPECT_THAT(imported.model(), HasSubstr(item));
    }
}

TEST(TabularImport, MakesNoColumnAFactWhereNothingIsWithoutAMeasure) {
    auto const imported = ImportedText::ofTable(R"("columns":[{"name":"n","dataType":"double"}])",
                                                R"("discourageImplicitMeasures":true)");
    EXPECT_THAT(imported.model(), HasSubstr(R"(name="n" datatype="double" usage="attribute")"));
}

TEST(TabularImport, NestsDisplayFoldersAndSharesThem) {
    auto const imported = ImportedText::ofTable(
        R"("columns":[{"name":"A","displayFolder":"F\\G"},{"name":"B","displayFolder":" F "}],
           "measures":[{"name":"C","displayFolder":"\\F\\\\G\\;Other"}])");
    EXPECT_THAT(imported.model(), HasSubstr(R"(
      <queryItemFolder id="folder:[T].[F]" name="F">
        <queryItemFolder id="folder:[T].[F].[G]" name="G">
          <queryItem id="column:[T].[A]" name="A" usage="attribute"/>
          <queryItem id="measure:[T].[C]" name="C" usage="fact"/>
        </queryItemFolder>
        <queryItem id="column:[T].[B]" name="B" usage="attribute"/>
      </queryItemFolder>
)"));
    EXPECT_EQ(imported.account().mappedOf("display folder"), 2U);
    EXPECT_THAT(imported.reasonFor("further display folder"), HasSubstr("would not be secured"));
}

TEST(TabularImport, MakesLevelsThatNameTheirColumnsInTheirOrder) {
    auto const imported = ImportedText::ofTable(
        R"("columns":[{"name":"A]"},{"name":"B"}],"hierarchies":[{"name":"H","levels":[
            {"name":"lower","ordinal":10,"column":"B"},{"name":"upper","ordinal":9,"column":"A]"}]}])",
        R"("name":"Shop")");
    EXPECT_THAT(imported.model(), HasSubstr(R"(
      <hierarchy id="hierarchy:[T].[H]" name="H">
        <level id="level:[T].[H].[upper]" name="upper" expression="[Shop].[T].[A]]]"/>
        <level id="level:[T].[H].[lower]" name="lower" expression="[Shop].[T].[B]"/>
      </hierarchy>
)"));
}

TEST(TabularImport, MakesRelationshipsBetweenItsTables) {
    ImportedText const imported(R"({"name":"S","model":{"tables":[
        {"name":"T","columns":[{"name":"A"}]},{"name":"U","columns":[{"name":"B"}]}],
        "relationships":[
            {"name":"5f","fromTable":"T","fromColumn":"A","toTable":"U","toColumn":"B","isActive":false},
            {"name":"60","fromTable":"T","fromColumn":"A","toTable":"U","toColumn":"gone"}]}})");
    EXPECT_THAT(imported.model(),
                HasSubstr(R"(<relationship id="relationship:[T].[A].[U].[B]" name="T.A → U.B" )"
                          R"(left="[S].[T]" leftCardinality="0..n" right="[S].[U]" )"
                          R"(rightCardinality="0..1" expression="[S].[T].[A] = [S].[U].[B]" )"
                          R"(isActive="false"/>)"));
    EXPECT_EQ(imported.reasonFor("relationship"), "it joins a column that was not mapped");
}

TEST(TabularImport, KeepsCaseAndScriptOfNames) {
    ImportedText const imported(
        R"({"name":"店 [1]","model":{"tables":[{"name":"Äpfel]","columns":[{"name":"ẞ"},{"name":"ss"}]}]}})");
    EXPECT_THAT(imported.model(), HasSubstr(R"(name="店 [1]")"));
    EXPECT_THAT(imported.model(), HasSubstr(R"(id="table:[Äpfel]]]" name="Äpfel]")"));
    EXPECT_THAT(imported.model(), HasSubstr(R"(id="column:[Äpfel]]].[ẞ]" name="ẞ")"));
    EXPECT_THAT(imported.model(), HasSubstr(R"(id="column:[Äpfel]]].[ss]" name="ss")"));
}

TEST(TabularImport, GivesAThingWithALineageTagItsIdWhateverItIsCalled) {
    auto const before =
        ImportedText::ofTable(R"("columns":[{"name":"A","lineageTag":"7e-1"},{"name":"B"}])");
    auto const after = ImportedText::ofTable(
        R"("columns":[{"name":"New"},{"name":"B"},{"name":"Renamed","lineageTag":"7e-1"}])");
    EXPECT_THAT(before.seenBy("owner"),
                ElementsAre("model:model", "table:[T]", "column:7e-1", "column:[T].[B]"));
    EXPECT_THAT(after.seenBy("owner"), ElementsAre("model:model", "table:[T]", "column:[T].[New]",
                                                   "column:[T].[B]", "column:7e-1"));
}

TEST(TabularImport, GivesAThingItsIdWhateverFolderItIsShownIn) {
    auto const before = ImportedText::ofTable(R"("columns":[{"name":"A","displayFolder":"F"}])");
    auto const after = ImportedText::ofTable(R"("columns":[{"name":"A"}])");
    EXPECT_THAT(before.seenBy("owner"), testing::Contains("column:[T].[A]"));
    EXPECT_THAT(after.seenBy("owner"), testing::Contains("column:[T].[A]"));
}

TEST(TabularImport, TellsOfKeysThatItDoesNotKnow) {
    auto const imported = ImportedText::ofTable(
        R"("columns":[{"name":"A","isShiny":true}],"measures":[{"name":"M","isShiny":{"x":1}}],"odd":[1,2])",
        R"("oddity":null)");
    for (char const* const kind :
         {"column.isShiny", "measure.isShiny", "table.odd", "model.oddity"}) {
        EXPECT_EQ(imported.reasonFor(kind), "this import does not know it") << kind;
    }
}

TEST(TabularImport, TellsOfATextThatIsNone) {
    auto const imported = ImportedText::ofTable(
        R"("columns":[{"name":"A","description":{"x":1}},{"name":"B","description":""}])");
    ASSERT_EQ(imported.account().omissions().size(), 2U);
    EXPECT_EQ(imported.account().omissions()[0].reason, "it is no text");
    EXPECT_EQ(imported.account().omissions()[1].reason, "it is empty");
}

TEST(TabularImport, LeavesCalculationGroupsOutWithAllThatIsInThem) {
    ImportedText const imported(R"({"model":{"tables":[{"name":"G","calculationGroup":
        {"calculationItems":[{"name":"YTD","expression":"1"},{"name":"PY"}]},
        "columns":[{"name":"Shift"}]}]}})");
    EXPECT_THAT(imported.model(), testing::Not(HasSubstr("Shift")));
    EXPECT_EQ(imported.account().readOf("calculation item"), 2U);
    EXPECT_EQ(imported.account().readOf("column"), 1U);
    EXPECT_EQ(imported.account().mappedOf("column") + imported.account().mappedOf("table"), 0U);
}

TEST(TabularImport, RefusesWhatIsNoTabularModelWhereItIsNone) {
    EXPECT_THAT(ImportedText("{}").errors(),
                ElementsAre(HasSubstr("m.bim:1:1: error: the object has no \"model\"")));
    EXPECT_THAT(ImportedText("[]").errors(),
                ElementsAre(HasSubstr("m.bim:1:1: error: a database is an object")));
    EXPECT_THAT(ImportedText("{\"model\":\n{\"tables\":5}}").errors(),
                ElementsAre(HasSubstr("m.bim:2:2: error: \"tables\"")));
    EXPECT_THAT(ImportedText("{\"model\":{\"tables\":[\n{}]}}").errors(),
                ElementsAre(HasSubstr("m.bim:2:1: error: the table has no \"name\"")));
    EXPECT_THAT(ImportedText("{\"model\":{\"tables\":[{\"name\":\" \"}]}}").errors(),
                ElementsAre(HasSubstr("the table has no \"name\"")));
    EXPECT_THAT(ImportedText("<model/>").errors(),
                ElementsAre(HasSubstr("m.bim:1:1: error: this is not JSON")));
}

TEST(TabularImport, RefusesDisplayFoldersInsideEachOtherPastTheLimit) {
    std::string folders;
    for (int level = 0; level < 600; ++level) {
        folders += "a\\\\";
    }
    auto const imported =
        ImportedText::ofTable(R"("columns":[{"name":"A","displayFolder":")" + folders + "\"}]");
    EXPECT_THAT(imported.errors(), ElementsAre(HasSubstr("nested more than 512 deep")));
}

TEST(TabularImport, AcceptsNamesThatStandTwiceAndHidesBoth) {
    auto const imported = ImportedText::ofTable(
        R"("columns":[{"name":"A"},{"name":"A"},{"name":"a"}])",
        R"("roles":[{"name":"r","modelPermission":"read","tablePermissions":[{"name":"T",
            "columnPermissions":[{"name":"A","metadataPermission":"none"}]}]}])");
    EXPECT_TRUE(imported.isWritten());
    EXPECT_THAT(imported.model(), HasSubstr("id=\"column:[T].[A]~2\""));
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("model:model", "table:[T]"));
}

vex::ImportOutcome importModel(char const* name) {
    vex::ImportRequest request;
    request.source = std::string(VEX_SOURCE_DIR) + "/tests/host/import/tabular/models/" + name;
    request.name = "m";
    return vex::runImport(*vex::findImportKind("tabular"), request);
}

TEST(TabularImport, ReadsALargeModelOfOthers) {
    auto const outcome = importModel("AdventureWorks.bim");
    ASSERT_TRUE(outcome.documents.has_value());
    EXPECT_THAT(outcome.found, testing::IsEmpty());
    struct Expected {
        char const* kind;
        std::size_t read;
        std::size_t mapped;
    };
    // As other tools count them in the file; 15 columns are the engine's own.
    for (Expected const& expected :
         {Expected{"table", 15, 15}, Expected{"column", 238, 223}, Expected{"measure", 67, 67},
          Expected{"hierarchy", 6, 6}, Expected{"level", 23, 23}, Expected{"relationship", 27, 27},
          Expected{"role", 4, 3}, Expected{"perspective", 3, 0}, Expected{"partition", 30, 0},
          Expected{"data source", 1, 0}, Expected{"measure.kpi", 10, 0},
          Expected{"column.formatString", 14, 14}}) {
        EXPECT_EQ(outcome.account.readOf(expected.kind), expected.read) << expected.kind;
        EXPECT_EQ(outcome.account.mappedOf(expected.kind), expected.mapped) << expected.kind;
    }
    for (auto const& omission : outcome.account.omissions()) {
        EXPECT_NE(omission.reason, "this import does not know it") << omission.kind;
    }
}

TEST(TabularImport, ReadsAModelOfOthersWithCulturesAndACalculationGroup) {
    auto const outcome = importModel("NewDeserializer.bim");
    ASSERT_TRUE(outcome.documents.has_value());
    EXPECT_THAT(outcome.documents->model,
                HasSubstr("<property name=\"name\" locale=\"da_DK\">HierarchyDK</property>"));
    EXPECT_THAT(outcome.documents->model,
                HasSubstr("<property name=\"name\" locale=\"de_DE\">LevelDE</property>"));
    EXPECT_EQ(outcome.account.readOf("perspective"), 2U);
    EXPECT_EQ(outcome.account.readOf("calculation item"), 1U);
}

} // namespace
