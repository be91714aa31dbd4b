#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

TEST(WordWarning, NamesThePropertyThatWasProbablyMeant) {
    ToolResult const result = ToolFolder().Run({"metadata", "small.model.xml", "--depth", "1",
                                                "--property", "name", "--property", "screentip"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("name=\"Sales\""));
    EXPECT_EQ(result.error, "vexma: warning: no object that may be seen has the property "
                            "\"screentip\"; did you mean screenTip?\n");
}

TEST(WordWarning, IsAnErrorWhenItIsStrict) {
    for (char const* const command : {"metadata", "tree"}) {
        ToolResult const result = ToolFolder().Run(
            {command, "small.model.xml", "--collection", "querySubjct", "--strict"});
        EXPECT_EQ(result.status, 1) << command;
        EXPECT_THAT(result.out, HasSubstr("Sales"));
        EXPECT_THAT(result.error, HasSubstr("did you mean querySubject?"));
    }
}

TEST(WordWarning, IsNotGivenForWhatIsThere) {
    ToolResult const result = ToolFolder().Run(
        {"tree", "small.model.xml", "--property", "name", "--property", "ID", "--collection",
         "querySubject/queryItem", "--collection", "namespace/querySubject", "--global",
         "supportedLocales", "--locale", "de_AT", "--strict"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
}

/// A model whose measure ann may not see.
std::string askedByAnn(std::string const& property) {
    ToolFolder const folder;
    folder.Write(
        "small.model.xml",
        "<model><namespace id='n1' name='A'><querySubject id='q1' name='B' band='x'/>"
        "<measure id='m' name='C' secretRate='3'/></namespace><securityView id='v1'>"
        "<set kind='included'><item>n1</item><item>q1</item></set></securityView></model>");
    return folder.Run(ToolFolder::As("tree", "ann", {"--property", property, "--property", "name"}))
        .error;
}

TEST(WordWarning, DoesNotTellWhatTheUserMayNotSee) {
    std::string const known = askedByAnn("secretRate");
    EXPECT_EQ(known,
              "vexma: warning: no object that may be seen has the property \"secretRate\"\n");
    EXPECT_EQ(askedByAnn("secretRat"),
              "vexma: warning: no object that may be seen has the property \"secretRat\"\n");
    EXPECT_THAT(askedByAnn("bnad"), HasSubstr("did you mean band?"));
    EXPECT_THAT(askedByAnn("band"), IsEmpty());
}

TEST(WordWarning, IsNotGivenForWhatAnAnswerAtAnObjectShows) {
    ToolFolder const folder;
    folder.Write("small.model.xml",
                 "<model><namespace id='n1' name='A'><folder id='f1' name='F'>"
                 "<shortcut id='s1' name='S' refobj='[A].[C]'/></folder>"
                 "<measure id='m' name='C' secretRate='3'/></namespace><securityView id='v1'>"
                 "<set kind='included'><item>n1</item><item>f1</item><item>s1</item></set>"
                 "</securityView></model>");
    for (char const* const command : {"metadata", "tree"}) {
        ToolResult const result = folder.Run(ToolFolder::As(
            command, "ann", {"--id", "s1", "--property", "secretRate", "--property", "name"}));
        EXPECT_EQ(result.status, 0) << command;
        EXPECT_THAT(result.out, HasSubstr("measure"));
        EXPECT_THAT(result.error, IsEmpty());
    }
}

TEST(WordWarning, TellsWhereInARequestFileItIs) {
    ToolFolder const folder;
    folder.Write("r.xml", "<Metadata Dept='1'>\n<Property name='*/@nmae'/>\n"
                          "<Propery name='*/@name'/></Metadata>");
    ToolResult const result = folder.Run({"metadata", "small.model.xml", "--request", "r.xml"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error,
              "vexma: warning: r.xml:1:20: nothing reads the attribute \"Dept\" of the element "
              "\"Metadata\"; did you mean Depth?\n"
              "vexma: warning: r.xml:3:26: nothing reads the element \"Propery\"; did you mean "
              "Property?\n"
              "vexma: warning: r.xml:2:27: no object that may be seen has the property \"nmae\"; "
              "did you mean name?\n");
    EXPECT_THAT(
        folder.Run({"tree", "small.model.xml", "--request", "-"}, "<Metadata Dept='1'/>").error,
        HasSubstr("standard input:1:"));
}

TEST(WordWarning, IsGivenForALanguageThatTheModelLacks) {
    for (std::vector<std::string> const& arguments :
         {std::vector<std::string>{"metadata", "small.model.xml"},
          {"tree", "small.model.xml"},
          {"tree", "small.model.xml", "--why"},
          {"access", "small.model.xml", "q1"}}) {
        std::vector<std::string> all = arguments;
        all.insert(all.end(), {"--locale", "fr", "--strict"});
        ToolResult const result = ToolFolder().Run(all);
        EXPECT_EQ(result.status, 1) << arguments[0];
        EXPECT_EQ(result.error,
                  "vexma: warning: the model has no language \"fr\", so en is used; it has en, "
                  "de\n");
    }
}

TEST(WordWarning, IsGivenForALanguageThatTheModelLacksByEveryCommandThatTakesOne) {
    for (std::vector<std::string> const& arguments :
         {std::vector<std::string>{"explain", "small.model.xml", "q1", "--locale", "fr"},
          {"session", "small.model.xml", "--locale", "fr"},
          {"diff", "small.model.xml", "--locale", "fr"},
          {"diff", "small.model.xml", "--other-locale", "fr"},
          ToolFolder::As("verify", "ann", {"--locale", "fr"}),
          ToolFolder::As("who", "ann", {"q1", "--locale", "fr"}),
          ToolFolder::As("matrix", "ann", {"--locale", "fr"})}) {
        EXPECT_EQ(ToolFolder().Run(arguments).error,
                  "vexma: warning: the model has no language \"fr\", so en is used; it has en, "
                  "de\n")
            << arguments[0];
    }
}

TEST(WordWarning, IsGivenForAModeThatDoesNotExist) {
    ToolResult const result = ToolFolder().Run({"access", "small.model.xml", "q1", "--mode", "2"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "vexma: warning: there is no mode 2, so 0 is used\n");
}

TEST(WordWarning, ComesWithARefusalToo) {
    ToolResult const result = ToolFolder().Run(ToolFolder::As("metadata", "ann", {"--view", "v"}));
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("None of the requested security views may be used."));
    EXPECT_THAT(result.error, HasSubstr("the view \"v\" is none of the user's"));
}

} // namespace
