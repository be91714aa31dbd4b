#include "tests/apps/vexma/SampleRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(StartAtId, TakesAnIdAndAReferenceInTheDefaultLanguage) {
    for (char const* const id : {"qs.orders", "[Sales].[Orders]"}) {
        ToolResult const result = runOnSample("metadata", "ann",
                                              {"--locale", "de", "--id", id, "--depth", "1",
                                               "--property", "ID", "--property", "_path"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out,
                  "<Response><Result><querySubject ID=\"qs.orders\" "
                  "_path=\"[Einzelhandel].[Vertrieb].[Vorg\xC3\xA4nge].[Bestellungen]\"/>"
                  "</Result></Response>\n");
        EXPECT_THAT(result.error, IsEmpty());
    }
}

TEST(StartAtId, ReachesWhatItsNameDoesNot) {
    ToolResult const result =
        runOnSample("tree", "ann", {"--locale", "de", "--id", "qi.calendar.weekday", "--strict"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "queryItem Wochentag\n");
}

TEST(StartAtId, LetsAClientPageByTheIdsOfAnswers) {
    ToolResult const page =
        runOnSample("metadata", "carl", {"--id", "qs.orders", "--depth", "2", "--property", "ID"});
    EXPECT_THAT(page.out, HasSubstr("<queryItemFolder ID=\"qf.orders.dates\""));
    ToolResult const next =
        runOnSample("metadata", "carl", {"--id", "qf.orders.dates", "--property", "ID"});
    EXPECT_THAT(next.out, HasSubstr("<queryItemFolder ID=\"qf.orders.dates\"><queryItem ID="));
}

// The text is the same but for the name that was asked for; so is the status.
TEST(StartAtId, RefusesWhatTheUserMayNotSeeAsWhatDoesNotExist) {
    ASSERT_EQ(runOnSample("metadata", "admin", {"--id", "ca.margin"}).status, 0);
    for (std::string const command : {"metadata", "tree"}) {
        for (std::string const more : {"--strict", "--estimate", "--why"}) {
            if ((more == "--estimate") != (command == "metadata") && more != "--strict") {
                continue; // each has one of the two
            }
            ToolResult const hidden = runOnSample(command, "carl", {"--id", "ca.margin", more});
            ToolResult const missing = runOnSample(command, "carl", {"--id", "ca.nargin", more});
            EXPECT_EQ(hidden.status, 3);
            EXPECT_EQ(missing.status, 3);
            EXPECT_THAT(hidden.out, IsEmpty());
            EXPECT_THAT(missing.out, IsEmpty());
            std::string text = hidden.error;
            text.replace(text.find("margin"), 1, "");
            text.insert(text.find("argin"), "n");
            EXPECT_EQ(text, missing.error);
            EXPECT_THAT(missing.error, HasSubstr("no object with the id or reference"));
        }
    }
    EXPECT_EQ(runOnSample("metadata", "ann", {"--id", "ca.margin"}).status,
              runOnSample("metadata", "ann", {"--id", "[Sales].[Margin]"}).status);
}

TEST(StartAtId, IsRefusedAlikeForKnownAndUnknownWhereAUserHasNoView) {
    ToolResult const known = ToolFolder().Run(ToolFolder::As("metadata", "bob", {"--id", "q1"}));
    ToolResult const unknown = ToolFolder().Run(ToolFolder::As("metadata", "bob", {"--id", "q9"}));
    EXPECT_EQ(known.status, 1);
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(known.error, unknown.error);
}

TEST(StartAtId, GoesWithARequestDocumentWhoseOwnStartIsToldToPlayNoPart) {
    ToolFolder const folder;
    folder.Write("r.xml",
                 "<Metadata start_at='[Sales]' Depth='1'><Property name='*/@ID'/></Metadata>");
    ToolResult const result =
        folder.Run({"metadata", "small.model.xml", "--request", "r.xml", "--id", "i1", "--strict"});
    EXPECT_EQ(result.out, "<Response><Result><queryItem ID=\"i1\"/></Result></Response>\n");
    EXPECT_EQ(result.error, "vexma: warning: --id says where to start; the request's own start "
                            "[Sales] is not looked at\n");
    EXPECT_EQ(result.status, 1);
}

TEST(StartAtId, IsToldToPlayNoPartInARequestForThePackage) {
    ToolResult const result = runOnSample("metadata", "ann", {"--id", "qs.orders", "--functions"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("<package"));
    EXPECT_EQ(result.error, "vexma: warning: the request asks for the package, which has no start; "
                            "--id is not looked at\n");
}

TEST(StartAtId, GoesWithAnEstimateAndWithReasons) {
    EXPECT_THAT(ToolFolder().Run({"metadata", "small.model.xml", "--id", "q1", "--estimate"}).out,
                HasSubstr("elements  5\n"));
    ToolResult const reasons =
        ToolFolder().Run(ToolFolder::As("tree", "ann", {"--id", "q1", "--why"}));
    EXPECT_EQ(reasons.status, 0);
    EXPECT_THAT(reasons.out, HasSubstr("querySubject Orders\n"));
    EXPECT_THAT(reasons.out, HasSubstr("Secret"));
}

TEST(StartAtId, IsTheOnlyStartAndNotEmpty) {
    for (std::vector<std::string> const& more :
         {std::vector<std::string>{"--id", "q1", "--start", "[Sales]"},
          std::vector<std::string>{"--id", "q1", "--ref", "[Sales].[Orders]"},
          std::vector<std::string>{"--id", ""}}) {
        std::vector<std::string> arguments{"metadata", "small.model.xml"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        ToolResult const result = ToolFolder().Run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.error, HasSubstr("--id"));
    }
}

TEST(DidYouMean, LeadsWhereItSays) {
    struct Row {
        std::vector<std::string> asked;
        char const* question;
    };
    Row const rows[] = {
        // a reference as a path, names in another language, an id, other case
        {{"--start", "[Retail].[Sales].[Orders]"}, "[Retail].[Sales].[Transactions].[Orders]?"},
        {{"--start", "[Einzelhandel].[Vertrieb].[Aktionen]"}, "[Retail].[Sales].[Promotions]?"},
        {{"--start", "qs.promotions"}, "[Retail].[Sales].[Promotions]?"},
        {{"--start", "[retail].[SALES].[promotions]"}, "[Retail].[Sales].[Promotions]?"},
        {{"--ref", "[Retail].[Sales].[Promotions].[Title]"}, "[Sales].[Promotions].[Title]?"},
        {{"--ref", "qi.promotions.title"}, "--id qi.promotions.title?"},
        // a query subject's reference is no start; a path that leads astray is replaced
        {{"--ref", "[Sales].[Orders]"}, "--id qs.orders?"},
        {{"--locale", "de", "--start", "[Einzelhandel].[Gemeinsames].[Kalender].[Wochentag]"},
         "--id qi.calendar.weekday?"},
        {{"--id", "[Vertrieb].[Bestellungen]"}, "[Sales].[Orders]?"},
    };
    for (Row const& row : rows) {
        ToolResult const result = runOnSample("metadata", "ann", row.asked);
        EXPECT_THAT(result.error, HasSubstr(std::string("did you mean ") + row.question))
            << row.asked.back();
    }
}

TEST(DidYouMean, IsToldForAReferenceInAnotherLanguageThatIsAskedAbout) {
    ToolResult const result = runOnSample("access", "ann", {"[Vertrieb].[Bestellungen]"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("did you mean [Sales].[Orders]?"));
}

TEST(DidYouMean, NamesNothingThatTheUserMayNotSee) {
    for (std::vector<std::string> const& asked :
         {std::vector<std::string>{"metadata", "--start", "[Retail].[Sales].[margin]"},
          std::vector<std::string>{"metadata", "--start", "ca.margi"},
          std::vector<std::string>{"metadata", "--ref", "[Sales].[Margn]"},
          std::vector<std::string>{"access", "[Vertrieb].[Marge]"},
          std::vector<std::string>{"access", "[Sales].[Margn]"}}) {
        std::vector<std::string> const more(asked.begin() + 1, asked.end());
        EXPECT_THAT(runOnSample(asked.front(), "carl", more).error,
                    Not(testing::AnyOf(HasSubstr("[Margin]?"), HasSubstr("ca.margin"))))
            << more.back();
    }
    EXPECT_THAT(runOnSample("access", "admin", {"[Sales].[Margn]"}).error,
                HasSubstr("did you mean [Sales].[Margin]?"));
}

} // namespace
