// Everybody at once: access --all-users, who and matrix.

#include "tests/apps/vexma/SampleRun.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST(AccessOfAllUsers, IsALineForEachObjectAndUser) {
    ToolResult const result = runOnSample("access", "", {"--all-users", "ca.margin", "qs.orders"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "1\tadmin\tca.margin\n0\tann\tca.margin\n0\tcarl\tca.margin\n"
                          "-\tnora\tca.margin\n1\tadmin\tqs.orders\n1\tann\tqs.orders\n"
                          "1\tcarl\tqs.orders\n-\tnora\tqs.orders\n");
    EXPECT_THAT(result.error, StartsWith("vexma: nora: every request is refused: "));
}

TEST(AccessOfAllUsers, GoesWithoutAUser) {
    EXPECT_EQ(runOnSample("access", "ann", {"--all-users", "ca.margin"}).status, 2);
    EXPECT_EQ(runOnSample("access", "", {"ca.margin"}).status, 2);
    ToolResult const alone = ToolFolder().Run({"access", "small.model.xml", "--all-users", "q1"});
    EXPECT_EQ(alone.out, "1\tq1\n");
}

TEST(Who, TellsWhichUsersAndRolesSeeAnObjectAndWhy) {
    ToolResult const result = runOnSample("who", "", {"[Sales].[Margin]"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_THAT(result.out, StartsWith("calculation \"Margin\" (ca.margin)\n"
                                       "  seen by user admin\n"
                                       "    shown: role administrator includes it"));
    EXPECT_THAT(result.out, HasSubstr("  not seen by user ann\n    hidden: "));
    EXPECT_THAT(result.out, HasSubstr("  every request is refused for user nora\n"));
    EXPECT_THAT(result.out, HasSubstr("  seen by role administrator\n"));
    EXPECT_THAT(result.out, HasSubstr("  every request is refused for role trainee\n"));
}

TEST(Who, PutsThoseTogetherOfWhomTheSameIsSaid) {
    ToolFolder const folder;
    folder.Write("m.model.xml", R"(<model defaultLocale="en"><namespace id="n" name="N">
        <querySubject id="q" name="Q"><queryItem id="i" name="I"/></querySubject>
        <shortcut id="s" name="S" refobj="[N].[Q]"/></namespace>
        <securityViews><securityView id="v"><set kind="included"><item>n</item><item>s</item>
        </set></securityView></securityViews></model>)");
    folder.Write("m.catalog.xml", R"(<catalog>
        <model path="/content/m" file="m.model.xml"><grant role="r" view="v"/></model>
        <user name="a"><role>r</role></user><user name="b"><role>r</role></user></catalog>)");
    ToolResult const result =
        folder.Run({"who", "--catalog", "m.catalog.xml", "--model", "/content/m", "i", "n"});
    EXPECT_EQ(result.out, R"(queryItem "I" (i)
  shown past the views to users a, b
    hidden: not among the included objects of the views in force (v)
    in the tree: left out
    in the tree: written in the shortcut "S" (s), behind which the included objects of views are not asked for
  shown past the views to role r
    hidden: not among the included objects of the views in force (v)
    in the tree: left out
    in the tree: written in the shortcut "S" (s), behind which the included objects of views are not asked for

namespace "N" (n)
  seen by users a, b
    shown: included by the views in force (v), and no view of the model is role based
  seen by role r
    shown: included by the views in force (v), and no view of the model is role based
)");
}

TEST(Who, IsToldToProgramsToo) {
    json const told = json::parse(runOnSample("who", "", {"ca.margin", "--json"}).out);
    json const& seen = told.at("objects")[0].at("seenBy");
    EXPECT_EQ(seen[0].at("users"), json::parse(R"(["admin"])"));
    EXPECT_EQ(seen[0].at("sees"), "yes");
    EXPECT_EQ(runOnSample("who", "", {"no.such"}).status, 3);
    EXPECT_EQ(runOnSample("who", "", {}).status, 2);
}

TEST(Matrix, DrawsObjectsByUsers) {
    ToolResult const result =
        runOnSample("matrix", "", {"--class", "calculation", "--below", "ns.stock"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, StartsWith("admin  ann   carl  nora  \n"));
    EXPECT_THAT(
        result.out,
        HasSubstr("yes    no    no    -     calculation \"Stock Value\" (ca.stockValue)\n"));
    EXPECT_THAT(result.out, HasSubstr("past: in a tree although the views leave it out"));
    EXPECT_THAT(result.out, HasSubstr("nora: The user has no security view"));
    EXPECT_THAT(result.out, Not(HasSubstr("securityView ")));
}

TEST(Matrix, DrawsObjectsByRoles) {
    ToolResult const result =
        runOnSample("matrix", "", {"--by", "roles", "--class", "querySubject", "--format", "csv"});
    EXPECT_THAT(result.out,
                StartsWith("id,reference,class,name,administrator,analyst,clerk,trainee\r\n"));
    EXPECT_THAT(result.out, HasSubstr("\r\nqs.employees,[Retail].[Employees],querySubject,"
                                      "Employees,yes,no,no,refused\r\n"));
}

TEST(Matrix, IsWrittenAsJson) {
    json const told =
        json::parse(runOnSample("matrix", "", {"--below", "ca.margin", "--format", "json"}).out);
    ASSERT_EQ(told.at("objects").size(), 1U);
    EXPECT_EQ(told.at("objects")[0].at("sees"),
              json::parse(R"({"admin": "yes", "ann": "no", "carl": "no", "nora": "refused"})"));
    EXPECT_TRUE(told.at("refused").contains("nora"));
}

TEST(Matrix, TellsAClassThatTheModelLacksWithTheOneThatMayBeMeant) {
    ToolResult const slip = runOnSample("matrix", "", {"--class", "querysubjct"});
    EXPECT_EQ(slip.status, 2);
    EXPECT_EQ(slip.out, "");
    EXPECT_EQ(slip.error, "vexma: the model has no object of the class \"querysubjct\"; did you "
                          "mean querySubject?\n");
    ToolResult const odd =
        runOnSample("matrix", "", {"--class", "calculation", "--class", "zebra"});
    EXPECT_EQ(odd.status, 2);
    EXPECT_EQ(odd.error, "vexma: the model has no object of the class \"zebra\"\n");
    EXPECT_EQ(runOnSample("matrix", "", {"--class", "namespace"}).status, 0);
}

TEST(Matrix, OfRolesGoesWithoutAUser) {
    ToolResult const result = runOnSample("matrix", "ann", {"--by", "roles"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.error, HasSubstr("leave --user out"));
}

TEST(Matrix, NeedsKnownObjectsAndRoles) {
    EXPECT_EQ(runOnSample("matrix", "", {"--below", "no.such"}).status, 3);
    EXPECT_EQ(runOnSample("matrix", "", {"--format", "xml"}).status, 2);
    EXPECT_EQ(ToolFolder().Run({"matrix", "small.model.xml", "--by", "roles"}).status, 2);
    EXPECT_THAT(ToolFolder().Run({"matrix", "small.model.xml"}).out, StartsWith("everybody  \n"));
}

} // namespace
