#include "tests/apps/vexma/SampleRun.h"
#include "tests/support/Casts.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(Explain, TellsWhyAnnDoesNotSeeTheMargin) {
    ToolResult const result = runOnSample("explain", "ann", {"[Sales].[Margin]"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_THAT(result.out, HasSubstr(R"(calculation "Margin" (ca.margin)
  hidden: not among the included objects of the views in force (view.analyst Analysts)
  in the tree: left out
)"));
    EXPECT_THAT(result.out, HasSubstr("  view.default Everyone Else excludes it\n"));
}

TEST(Explain, TellsThatTheDefaultViewExcludesWhatTheUsersViewIncludes) {
    EXPECT_THAT(runOnSample("explain", "ann", {"qi.customers.email"}).out,
                HasSubstr("hidden: the default view (view.default Everyone Else) excludes it, and "
                          "no view of a role that the user holds includes it"));
}

TEST(Explain, TellsThatARolesViewComesBeforeTheDefaultView) {
    EXPECT_THAT(runOnSample("explain", "carl", {"qi.customers.email"}).out,
                HasSubstr("shown: role clerk includes it (view view.clerk Store Clerks), which "
                          "comes before the default view's exclusion (view.default Everyone "
                          "Else)"));
}

TEST(Explain, TellsThatTheMembersOfALeftOutObjectAreLifted) {
    EXPECT_THAT(runOnSample("explain", "carl", {"ns.stock"}).out,
                HasSubstr("in the tree: left out; its members that are shown are lifted into the "
                          "namespace \"Retail\" (ns.retail)"));
}

TEST(Explain, TellsThatNothingInsideALeftOutObjectIsShown) {
    EXPECT_THAT(runOnSample("explain", "ann", {"qs.employees"}).out,
                HasSubstr("in the tree: left out, and so is all that is in it\n"));
}

TEST(Explain, TellsThatTheTargetOfAShortcutIsNotTested) {
    EXPECT_THAT(runOnSample("explain", "carl", {"qs.products"}).out,
                HasSubstr("in the tree: reached through the shortcut \"Products Sold\" "
                          "(sc.products), under whose name it is written; the target is not "
                          "tested"));
}

TEST(Explain, TellsThatViewListsAreNotAskedForBehindAShortcut) {
    EXPECT_THAT(runOnSample("explain", "carl", {"qi.products.sku"}).out,
                HasSubstr("in the tree: written in the shortcut \"Products Sold\" (sc.products), "
                          "behind which the included objects of views are not asked for"));
}

TEST(Explain, TellsThatAnObjectHasNoNameInALanguage) {
    EXPECT_THAT(runOnSample("explain", "admin", {"--locale", "de", "qi.promotions.budget"}).out,
                HasSubstr("left out with all its members: it has no name in de, and nothing else "
                          "is asked for"));
}

TEST(Explain, TellsThatAnObjectOutsideOfAllNamespacesIsInNoTree) {
    EXPECT_THAT(runOnSample("explain", "admin", {"ds.warehouse"}).out,
                HasSubstr("in no tree: it stands in no namespace"));
}

TEST(Explain, TellsThatTheStartIsShownInAnyCase) {
    ToolFolder folder;
    folder.Write("m.model.xml", R"(<model><namespace id="n" name="Start"/>
        <securityViews><securityView id="v1" name="Clerks"><set kind="included"><item>x</item></set>
        </securityView></securityViews></model>)");
    folder.Write("m.catalog.xml", casts::catalogue({"v1"}));
    ToolResult const result = folder.Run(
        {"explain", "--catalog", "m.catalog.xml", "--model", "/content/m", "--user", "carl", "n"});
    EXPECT_EQ(result.out, R"(namespace "Start" (n)
  hidden: not among the included objects of the views in force (v1 Clerks)
  in the tree: shown because it is the start of a tree, though it is not accessible

the views of the model, for this user:
  v1 Clerks: in force; not role based
)");
}

TEST(Explain, TellsWhyViewsWereNotConsidered) {
    std::string const out = runOnSample("explain", "ann", {"ca.margin"}).out;
    EXPECT_THAT(out, HasSubstr("view.analyst Analysts: in force; not role based\n"));
    EXPECT_THAT(out, HasSubstr("view.clerk Store Clerks: not in force: not granted to the user; "
                               "role based, and the user does not hold role clerk, its first "
                               "member's\n"));
    EXPECT_THAT(out, HasSubstr("view.default Everyone Else: not in force: not granted to the user; "
                               "the default view, being role based without members"));
}

TEST(Explain, LeavesTheViewsListsOutOfAccountInModeOne) {
    EXPECT_THAT(runOnSample("explain", "carl", {"--mode", "1", "qs.suppliers"}).out,
                Not(HasSubstr("not among the included objects")));
}

TEST(Explain, WritesJson) {
    json const told = json::parse(runOnSample("explain", "ann", {"--json", "ca.margin"}).out);
    json const& object = told.at("objects").at(0);
    EXPECT_EQ(object.at("id"), "ca.margin");
    EXPECT_EQ(object.at("class"), "calculation");
    EXPECT_EQ(object.at("name"), "Margin");
    EXPECT_EQ(object.at("accessible"), false);
    EXPECT_EQ(object.at("rule"), "not-in-views");
    EXPECT_EQ(object.at("tree").at(0), "left out");
    EXPECT_EQ(object.at("views").at(0), json({{"view", "view.everything"},
                                              {"included", true},
                                              {"excluded", false},
                                              {"hidden", false}}));
    json const& view = told.at("views").at(2);
    EXPECT_EQ(view.at("id"), "view.clerk");
    EXPECT_EQ(view.at("inForce"), false);
    EXPECT_EQ(view.at("role"), "role-not-held");
    EXPECT_EQ(view.at("firstMemberRole"), "clerk");
}

TEST(Explain, OfAModelFileAloneConsidersNoView) {
    ToolResult const result = ToolFolder().Run({"explain", "small.model.xml", "i2"});
    EXPECT_THAT(result.out, HasSubstr("shown: nobody is restricted on this model path"));
    EXPECT_THAT(result.out, HasSubstr("no view was considered"));
}

TEST(Explain, IsRefusedToAUserWithoutViews) {
    ToolResult const result = runOnSample("explain", "nora", {"ca.margin", "--verbose"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("1170699671"));
}

TEST(Explain, NeedsAnObject) {
    EXPECT_EQ(runOnSample("explain", "ann").status, 2);
    EXPECT_EQ(runOnSample("explain", "ann", {"nothing"}).status, 3);
}

} // namespace
