#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr char const* sourceBefore = R"({"model":{"culture":"en","tables":[{"name":"T",
    "description":"All of it","columns":[{"name":"A"},{"name":"B"},{"name":"=C"}]}]}})";
constexpr char const* sourceAfter = R"({"model":{"culture":"en","tables":[{"name":"T",
    "description":"Most of it","columns":[{"name":"New"},{"name":"A"},{"name":"=C"}]}]}})";

std::vector<std::string> of(std::string const& action, std::string const& folder,
                            std::vector<std::string> const& more) {
    std::vector<std::string> arguments{"translate", action, folder + "/t.catalog.xml", "--model",
                                       "/content/t"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

/// Two imports of one source, which has changed in between.
void importTwice(ToolFolder const& folder) {
    folder.Write("before/t.bim", sourceBefore);
    folder.Write("after/t.bim", sourceAfter);
    folder.Run({"import", "tabular", "before/t.bim", "-o", "old"});
    folder.Run({"import", "tabular", "after/t.bim", "-o", "new"});
}

TEST(Translate, PutsWhatPeopleWroteIntoTheModelThatWasImportedAgain) {
    for (std::string const ending : {"csv", "xlf"}) {
        ToolFolder const folder;
        importTwice(folder);
        std::string const file = "de." + ending;
        ToolResult const exported = folder.Run(of("export", "old", {"--locale", "de", "-o", file}));
        ASSERT_EQ(exported.status, 0) << exported.error;
        EXPECT_EQ(exported.out, "wrote " + file + "\ntexts: 7, not translated: 7\n");
        folder.RunShell(
            ending == "csv"
                ? "sed -i -e 's/All of it,,/All of it,Alles,/' -e 's/name,A,,/name,A,Ä,/'"
                  " -e 's/name,B,,/name,B,Bé,/' -e \"s/name,'=C,,/name,'=C,'=Z,/\" de.csv"
                : "sed -i -e '/>All of it</a <target>Alles</target>' -e '/>A</a <target>Ä</target>'"
                  " -e '/>B</a <target>Bé</target>' -e '/>=C</a <target>=Z</target>' de.xlf");
        ToolResult const applied = folder.Run(
            of("apply", "new", {file, "-o", "new/t.model.xml", "--update", file, "--exit-code"}));
        EXPECT_EQ(applied.status, 1);
        EXPECT_THAT(applied.out, HasSubstr("added: 3, replaced: 0, as before: 0"));
        EXPECT_THAT(applied.error, HasSubstr("the description of \"table:[T]\" has changed from "
                                             "\"All of it\" to \"Most of it\": look at \"Alles\""));
        EXPECT_THAT(applied.error, HasSubstr("the name of \"column:[T].[B]\" is gone, so \"Bé\" "
                                             "was not applied"));
        EXPECT_EQ(folder.Run({"validate", "new/t.catalog.xml"}).status, 0);
        ToolResult const tree = folder.Run({"tree", "--catalog", "new/t.catalog.xml", "--model",
                                            "/content/t", "--user", "owner", "--locale", "de"});
        EXPECT_EQ(tree.out, "folder t\n└── querySubject T\n    ├── queryItem New\n"
                            "    ├── queryItem Ä\n    └── queryItem =Z\n");
        // What is gone is kept and marked, and everything else is as before.
        EXPECT_THAT(folder.RunShell("cat " + file).out, HasSubstr("Bé"));
        EXPECT_THAT(folder.RunShell("cat " + file).out, HasSubstr("gone"));
        ToolResult const again = folder.Run(of("apply", "new", {file, "-o", "again.model.xml"}));
        EXPECT_EQ(again.status, 0);
        EXPECT_THAT(again.out, HasSubstr("added: 0, replaced: 0, as before: 3"));
        EXPECT_EQ(folder.RunShell("cmp new/t.model.xml again.model.xml").status, 0);
    }
}

TEST(Translate, WritesNothingWhenTheTranslationsCannotBeRead) {
    ToolFolder const folder;
    importTwice(folder);
    folder.Write("bad.csv", "object,property,source,target\nx,name,\"a,b\n");
    ToolResult const result = folder.Run(
        of("apply", "new", {"bad.csv", "--locale", "de", "-o", "made.xml", "--update", "u.csv"}));
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("bad.csv:2:8: the quote that begins here has no end"));
    EXPECT_NE(folder.RunShell("test -e made.xml -o -e u.csv").status, 0);
}

TEST(Translate, TellsWhatIsMissingOnTheCommandLine) {
    ToolFolder const folder;
    importTwice(folder);
    folder.Write("none.csv", "object,property,source,target\n");
    struct Case {
        std::vector<std::string> more;
        char const* complaint;
    };
    for (Case const& each :
         {Case{{"-o", "x.xlf"}, "add --locale L"},
          Case{{"--locale", "de", "-o", "x"}, "add --format"},
          Case{{"--locale", "xx", "-o", "x.xlf"}, "the locale \"xx\" is unknown"},
          Case{{"--locale", "en", "-o", "x.xlf"}, "into another language than en"},
          Case{{"x", "--locale", "de", "-o", "x.xlf"}, "leave out x"}}) {
        ToolResult const result = folder.Run(of("export", "new", each.more));
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.error, HasSubstr(each.complaint));
    }
    ToolResult const result = folder.Run(of("apply", "new", {"none.csv", "-o", "x.xml"}));
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("do not say their language; add --locale L"));
    EXPECT_EQ(folder.Run(of("apply", "new", {"-o", "x.xml"})).status, 2);
    EXPECT_EQ(folder
                  .Run({"translate", "export", "new/t.catalog.xml", "--model", "/content/gone",
                        "--locale", "de", "-o", "x.csv"})
                  .status,
              3);
}

TEST(Translate, ReadsAModelDocumentItselfAndWritesToStandardOutput) {
    ToolFolder const folder;
    importTwice(folder);
    ToolResult const exported = folder.Run(
        {"translate", "export", "new/t.model.xml", "--locale", "de", "-o", "-", "--format", "csv"});
    EXPECT_EQ(exported.status, 0) << exported.error;
    EXPECT_THAT(exported.out, HasSubstr("object,property,source (en),target (de),mark,note"));
    EXPECT_THAT(exported.out, Not(HasSubstr("wrote")));
}

} // namespace
