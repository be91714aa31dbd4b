#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(Metadata, AnswersFromAModelFileAlone) {
    ToolResult const result = ToolFolder().Run({"metadata", "small.model.xml"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "<Response><Result><folder name=\"Sales\"><querySubject name=\"Orders\">"
                          "<queryItem name=\"Quantity\"/><queryItem name=\"Secret\"/>"
                          "</querySubject></folder></Result></Response>\n");
    EXPECT_THAT(result.error, IsEmpty());
}

TEST(Metadata, ReadsTheModelFromStandardInput) {
    ToolResult const result =
        ToolFolder().RunShell("\"$VEXMA\" metadata - --depth 1 < small.model.xml");
    EXPECT_EQ(result.out, "<Response><Result><folder name=\"Sales\"/></Result></Response>\n");
}

TEST(Metadata, ReadsARequestFromStandardInput) {
    ToolResult const result =
        ToolFolder().Run({"metadata", "small.model.xml", "--request", "-"},
                         "<Metadata Depth='1'><Property name='*/@name'/></Metadata>");
    EXPECT_EQ(result.out, "<Response><Result><folder name=\"Sales\"/></Result></Response>\n");
}

TEST(Metadata, ShowsAUserWhatTheViewsInclude) {
    ToolResult const result = ToolFolder().Run(ToolFolder::As("metadata", "ann"));
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("Quantity"));
    EXPECT_THAT(result.out, Not(HasSubstr("Secret")));
}

TEST(Metadata, EndsWithStatusOneWhenThePluginRaises) {
    ToolResult const result = ToolFolder().Run(ToolFolder::As("metadata", "bob", {"--verbose"}));
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("1170699671"));
}

TEST(Metadata, AnswersInTheLanguageAskedFor) {
    ToolResult const result =
        ToolFolder().Run(ToolFolder::As("metadata", "ann", {"--locale", "de-at", "--depth", "1"}));
    EXPECT_THAT(result.out, HasSubstr("<folder name=\"Vertrieb\"/>"));
}

TEST(Metadata, TakesAPathInBracketsAsItStands) {
    ToolResult const result = ToolFolder().Run(
        {"metadata", "small.model.xml", "--start", "[Sales].[Orders]", "--depth", "1"});
    EXPECT_THAT(result.out, HasSubstr("<Result><querySubject name=\"Orders\"/></Result>"));
}

TEST(Metadata, FollowsAPathThroughCollectionsThatTheStartNamespaceLacks) {
    ToolResult const result =
        ToolFolder().Run({"metadata", "small.model.xml", "--start", "[Sales].[Orders].[Quantity]"});
    EXPECT_THAT(result.out, HasSubstr("<Result><queryItem name=\"Quantity\"/></Result>"));
}

TEST(Metadata, TakesAReferenceInBracketsAsItStands) {
    ToolResult const result =
        ToolFolder().Run({"metadata", "small.model.xml", "--ref", "[Sales].[Orders].[Quantity]"});
    EXPECT_THAT(result.out, HasSubstr("<Result><queryItem name=\"Quantity\"/></Result>"));
}

TEST(Metadata, BuildsEveryKindOfEntry) {
    ToolResult const result = ToolFolder().Run(
        {"metadata", "small.model.xml", "--start", "[Sales].[Orders]", "--property", "name",
         "--property", "querySubject/@screenTip", "--collection", "querySubject", "--collection",
         "querySubject/queryItem", "--constraint", "screenTip=something else", "--global",
         "effectiveLocale"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("<effectiveLocale>en</effectiveLocale>"));
    EXPECT_THAT(result.out, HasSubstr("<querySubject name=\"Orders\">"));
    EXPECT_THAT(result.out, HasSubstr("<queryItem name=\"Quantity\"/>"));
}

TEST(Metadata, AsksForThePackage) {
    ToolResult const result = ToolFolder().Run(ToolFolder::As(
        "metadata", "ann", {"--functions", "--property", "screenTip", "--locale", "de"}));
    EXPECT_THAT(result.out, HasSubstr("<package "));
    EXPECT_THAT(result.out, HasSubstr("name=\"Small\""));
    EXPECT_THAT(result.out, HasSubstr("screenTip=\"Klein\""));
}

TEST(Metadata, RefusesAViewThatTheUserLacks) {
    ToolResult const result =
        ToolFolder().Run(ToolFolder::As("metadata", "ann", {"--view", "v9", "--verbose"}));
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("1170551942"));
}

TEST(Metadata, IndentsWhenToldTo) {
    ToolResult const result =
        ToolFolder().Run({"metadata", "small.model.xml", "--depth", "1", "--pretty"});
    EXPECT_EQ(result.out, "<Response>\n  <Result>\n    <folder name=\"Sales\"/>\n"
                          "  </Result>\n</Response>\n");
}

TEST(Metadata, StopsAtTheElementsThatAreAllowed) {
    ToolResult const result =
        ToolFolder().Run({"metadata", "small.model.xml", "--max-elements", "3"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, IsEmpty());
}

/// Shortcuts that double at each of forty steps: an answer without end.
std::string endlessModel() {
    std::string model = "<model><namespace name='R'>";
    for (int step = 0; step < 40; ++step) {
        std::string const target = "' refobj='[N" + std::to_string(step + 1) + "]'/>";
        model += "<namespace name='N" + std::to_string(step) + "'><shortcut name='a" + target +
                 "<shortcut name='b" + target + "</namespace>";
    }
    return model + "<namespace name='N40'/></namespace></model>";
}

TEST(Metadata, StopsAtTheDeadline) {
    ToolFolder const folder;
    folder.Write("endless.xml", endlessModel());
    ToolResult const result = folder.Run({"metadata", "endless.xml", "--deadline", "0.1"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("deadline"));
}

TEST(Metadata, StopsWhenItIsInterrupted) {
    ToolFolder const folder;
    folder.Write("endless.xml", endlessModel());
    // The plug-in interrupts the program, and answers then.
    ToolResult const result = folder.RunShell(
        "VEX_REAL_PLUGIN='" VEX_PLUGIN_FILE "' VEX_FAULT='metadata 1 1 interrupt' \"$VEXMA\" "
        "metadata endless.xml --max-elements 1000000000 --plugin '" VEX_BAD_PLUGIN_DIR
        "/FaultyPlugin.vpl'");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("cancelled"));
}

TEST(Tree, DrawsTheAnswer) {
    ToolResult const result =
        ToolFolder().Run({"tree", "small.model.xml", "--property", "name", "--property",
                          "screenTip", "--global", "defaultLocale"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("defaultLocale en\n"));
    EXPECT_THAT(result.out, HasSubstr("├── "));
    EXPECT_THAT(result.out, HasSubstr("    └── queryItem Secret"));
    EXPECT_THAT(result.out, Not(HasSubstr("\033")));
}

TEST(Tree, SpellsControlCharactersOut) {
    ToolFolder const folder;
    folder.Write("evil.xml", "<model><namespace name=\"a&#x9b;31mb\"/></model>");
    ToolResult const result = folder.Run({"tree", "evil.xml"});
    EXPECT_EQ(result.out, "folder a\\u009B31mb\n");
}

TEST(Access, AnswersOneLineForEachObject) {
    ToolResult const result = ToolFolder().Run(
        ToolFolder::As("access", "ann", {"i1", "i2", "[Sales].[Orders].[Secret]"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "1\ti1\n0\ti2\n0\t[Sales].[Orders].[Secret]\n");
}

TEST(Access, LeavesTheIncludedListsOutOfAccountInModeOne) {
    ToolResult const result =
        ToolFolder().Run(ToolFolder::As("access", "ann", {"--mode", "1", "i2"}));
    EXPECT_EQ(result.out, "1\ti2\n");
}

TEST(Access, RestrictsNobodyOnAModelFileAlone) {
    ToolResult const result = ToolFolder().Run({"access", "small.model.xml", "i2"});
    EXPECT_EQ(result.out, "1\ti2\n");
}

TEST(Access, AnswersNothingWhenOneObjectIsUnknown) {
    ToolResult const result = ToolFolder().Run({"access", "small.model.xml", "i1", "i9"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, IsEmpty());
}

} // namespace
