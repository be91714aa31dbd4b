#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr char const* model = R"(<model defaultLocale="en"><namespace name="N" id="n">
<querySubject id="q" name="Orders"><queryItem id="i" name="Total"/></querySubject>
<querySubject id="p" name="Orders"/></namespace><securityViews><securityView id="v">
<set kind="included"><item>n</item><item>q</item></set></securityView></securityViews></model>
)";
constexpr char const* catalogue = R"(<catalog><model path="/content/m" file="m.vexm" POLICY>
<grant role="r" view="v"/></model><user name="ann"><role>r</role></user></catalog>
)";

std::string catalogueWith(std::string const& policy) {
    std::string text = catalogue;
    return text.replace(text.find("POLICY"), 6, policy);
}

void writeModel(ToolFolder const& folder) {
    folder.Write("m.model.xml", model);
    folder.Write("m.catalog.xml", catalogueWith(""));
    ToolResult const compiled = folder.Run({"compile", "m.model.xml", "-o", "m.vexm"});
    ASSERT_EQ(compiled.status, 0) << compiled.error;
    EXPECT_EQ(compiled.out, "wrote m.vexm\n");
}

TEST(Compile, MakesAnImageThatStandsForTheDocumentEverywhere) {
    ToolFolder const folder;
    writeModel(folder);
    std::vector<std::string> const ofUser{"--catalog",  "m.catalog.xml", "--model",
                                          "/content/m", "--user",        "ann"};
    for (std::string const command : {"tree", "metadata"}) {
        EXPECT_EQ(folder.Run({command, "m.vexm"}).out, folder.Run({command, "m.model.xml"}).out);
    }
    auto of = [&](std::vector<std::string> words) {
        words.insert(words.end(), ofUser.begin(), ofUser.end());
        return folder.Run(words);
    };
    EXPECT_EQ(of({"tree"}).out, "folder N\n└── querySubject Orders\n");
    EXPECT_EQ(of({"access", "q", "i"}).out, "1\tq\n0\ti\n");
    EXPECT_EQ(of({"verify"}).status, 0);
    EXPECT_EQ(folder.Run({"diff", "m.vexm", "m.model.xml"}).status, 0);
    EXPECT_EQ(folder.RunShell("$VEXMA tree - <m.vexm").out, folder.Run({"tree", "m.vexm"}).out);
    EXPECT_EQ(folder.Run({"validate", "m.catalog.xml"}).status,
              folder.Run({"validate", "m.model.xml"}).status);
}

TEST(Compile, KeepsPositionsForMessagesWhenItIsTold) {
    ToolFolder const folder;
    writeModel(folder);
    EXPECT_THAT(folder.Run({"validate", "m.vexm"}).out, HasSubstr("m.vexm: warning: "));
    ASSERT_EQ(folder.Run({"compile", "--positions", "m.model.xml", "-o", "p.vexm"}).status, 0);
    EXPECT_THAT(folder.Run({"validate", "p.vexm"}).out, HasSubstr("p.vexm:3:37: warning: "));
}

TEST(Compile, LeavesRoomForThePolicyOfACatalogue) {
    ToolFolder const folder;
    writeModel(folder);
    folder.Write("m.policy.yaml", "views:\n  x:\n    include: '#i'\n");
    folder.Write("m.catalog.xml", catalogueWith("policy=\"m.policy.yaml\""));
    ToolResult const shown =
        folder.Run({"policy", "show", "m.catalog.xml", "--model", "/content/m", "--view", "x"});
    EXPECT_EQ(shown.out, "n\nq\ni\n") << shown.error;
}

TEST(Compile, GivesTheDocumentBack) {
    ToolFolder const folder;
    writeModel(folder);
    ToolResult const shown = folder.Run({"decompile", "m.vexm"});
    EXPECT_THAT(shown.out, HasSubstr("<queryItem id=\"i\" name=\"Total\"/>"));
    EXPECT_EQ(folder.Run({"decompile", "m.vexm", "-o", "again.xml"}).out, "wrote again.xml\n");
    EXPECT_EQ(folder.RunShell("cat again.xml").out, shown.out);
    ASSERT_EQ(folder.Run({"compile", "again.xml", "-o", "again.vexm"}).status, 0);
    EXPECT_EQ(folder.Run({"decompile", "again.vexm"}).out, shown.out);
}

TEST(Compile, RefusesAModelWithAnErrorAndLeavesTheImageThatThereIs) {
    ToolFolder const folder;
    writeModel(folder);
    folder.Write("bad.xml", "<model><a id='1'/><a id='1'/></model>");
    ToolResult const refused = folder.Run({"compile", "bad.xml", "-o", "m.vexm"});
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.error, HasSubstr("bad.xml:1:30: another element has the id \"1\""));
    EXPECT_THAT(refused.out, IsEmpty());
    EXPECT_EQ(folder.Run({"tree", "m.vexm"}).status, 0);
    EXPECT_EQ(folder.RunShell("ls -A | grep -c vexm").out, "1\n");
}

TEST(Compile, SaysWhatIsWrongWithAnImage) {
    ToolFolder const folder;
    writeModel(folder);
    folder.RunShell("head -c 700 m.vexm >cut.vexm");
    for (std::string const command : {"tree", "decompile", "validate"}) {
        ToolResult const refused = folder.Run({command, "cut.vexm"});
        EXPECT_NE(refused.status, 0) << command;
        EXPECT_THAT(refused.out + refused.error,
                    HasSubstr("cannot be used as the image of a model: it has 700 bytes in place "
                              "of "))
            << command;
    }
    ToolResult const nowhere = folder.Run({"compile", "m.model.xml", "-o", "-"});
    EXPECT_EQ(nowhere.status, 2);
    EXPECT_THAT(nowhere.error, HasSubstr("give it a name"));
    EXPECT_EQ(folder.Run({"compile", "m.model.xml", "-o", "no/m.vexm"}).status, 3);
}

} // namespace
