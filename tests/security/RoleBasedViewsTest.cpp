#include "tests/security/EngineCase.h"

#include <gtest/gtest.h>

namespace {

// Everything that the tests ask for passes the requested view "all".
std::string const all = R"(
    <securityView id="all"><set kind="included">
      <item>a</item><item>b</item><item>c</item><item>d</item><item>e</item>
    </set></securityView>)";

std::string view(std::string const& inside, std::string const& roleBased = "true") {
    return "<securityView roleBased=\"" + roleBased + "\">" + inside + "</securityView>";
}

std::string set(std::string const& kind, std::string const& item) {
    return "<set kind=\"" + kind + "\"><item>" + item + "</item></set>";
}

std::string const clerk = "<member roleId=\"clerk\"/>";
std::string const boss = "<member roleId=\"boss\"/>";

EngineCase onViews(std::string const& views, std::vector<I18NString> const& roles = {"clerk"}) {
    return EngineCase(all + views, {"all"}, roles);
}

} // namespace

TEST(RoleBasedViews, TheIncludedIdsOfAHeldRoleAreNeeded) {
    EngineCase on = onViews(view(clerk + set("included", "a")));
    EXPECT_TRUE(on.includes("a"));
    EXPECT_FALSE(on.includes("b"));
    EXPECT_FALSE(on.includesBeyondViews("b"));
}

TEST(RoleBasedViews, WhatNoRequestedViewIncludesStaysOut) {
    EngineCase on = onViews(view(clerk + set("included", "other")));
    EXPECT_FALSE(on.includes("other"));
    EXPECT_TRUE(on.includesBeyondViews("other"));
}

TEST(RoleBasedViews, AViewWhoseRoleIsNotHeldContributesNothing) {
    EngineCase on = onViews(view(boss + set("included", "a") + set("hidden", "b")) +
                            view(clerk + set("included", "b")));
    EXPECT_FALSE(on.includes("a"));
    EXPECT_TRUE(on.includes("b"));
}

TEST(RoleBasedViews, TheyCountWithoutBeingRequested) {
    EngineCase on = onViews(view(clerk + set("included", "b")));
    EXPECT_FALSE(on.includes("a"));
}

TEST(RoleBasedViews, TheViewsOfAllHeldRolesAddUp) {
    EngineCase on = onViews(view(clerk + set("included", "a")) + view(boss + set("included", "b")),
                            {"boss", "clerk", "boss"});
    EXPECT_TRUE(on.includes("a"));
    EXPECT_TRUE(on.includes("b"));
}

// covers quirk: first-member-speaks
TEST(RoleBasedViews, OnlyTheFirstMemberIsLookedAt) {
    EngineCase on = onViews(view(boss + clerk + set("included", "a")));
    EXPECT_FALSE(on.includes("a"));
    EngineCase swapped = onViews(view(clerk + boss + set("included", "a")));
    EXPECT_TRUE(swapped.includes("a"));
}

TEST(RoleBasedViews, AMemberWithoutRoleMatchesTheEmptyRoleOnly) {
    std::string const views = view("<member/>" + set("included", "a"));
    EXPECT_FALSE(onViews(views).includes("a"));
    EXPECT_TRUE(onViews(views, {""}).includes("a"));
}

TEST(RoleBasedViews, HiddenIdsOfAHeldRoleAreOutWithoutADefaultView) {
    EngineCase on = onViews(view(clerk + set("included", "a") + set("hidden", "a")));
    EXPECT_FALSE(on.includes("a"));
}

TEST(RoleBasedViews, ExcludedIdsOfAHeldRoleDoNotCountWithoutADefaultView) {
    EngineCase on = onViews(view(clerk + set("included", "a") + set("excluded", "a")));
    EXPECT_TRUE(on.includes("a"));
}

TEST(RoleBasedViews, AViewWithoutMembersIsTheDefaultViewAndAllowsWhatItDoesNotExclude) {
    EngineCase on = onViews(view(set("excluded", "a")), {});
    EXPECT_FALSE(on.includes("a"));
    EXPECT_TRUE(on.includes("b"));
    EXPECT_FALSE(on.includes("x"));
}

TEST(RoleBasedViews, OfTheDefaultViewOnlyExcludedSetsCount) {
    EngineCase on = onViews(view(set("included", "x") + set("hidden", "a")), {});
    EXPECT_FALSE(on.includes("x"));
    EXPECT_TRUE(on.includes("a"));
}

TEST(RoleBasedViews, TheLastViewWithoutMembersIsTheDefaultView) {
    EngineCase on = onViews(view(set("excluded", "a")) + view(set("excluded", "b")), {});
    EXPECT_TRUE(on.includes("a"));
    EXPECT_FALSE(on.includes("b"));
}

TEST(RoleBasedViews, UnderADefaultViewTheRoleIncludesBeforeAnythingExcludes) {
    EngineCase on = onViews(view(set("excluded", "a")) +
                            view(clerk + set("included", "a") + set("excluded", "a") +
                                 set("excluded", "b") + set("hidden", "c")));
    EXPECT_TRUE(on.includes("a"));
    EXPECT_FALSE(on.includes("b"));
    EXPECT_TRUE(on.includes("c"));
    EXPECT_TRUE(on.includes("d"));
}

// covers quirk: role-based-by-leading-number
TEST(RoleBasedViews, AViewIsRoleBasedByTrueOrByALeadingNumberOtherThanZero) {
    for (char const* const yes : {"true", "1", "2", "2x", "-1", "+3", "007", " 5"}) {
        EXPECT_FALSE(EngineCase(all + view("", "false") + view(clerk, yes), {"all"}, {"clerk"})
                         .includes("a"))
            << yes;
    }
    for (char const* const notSo : {"false", "0", "", "yes", "TRUE", "True", "x2", "0x1", "."}) {
        EXPECT_TRUE(EngineCase(all + view(clerk, notSo), {"all"}, {"clerk"}).includes("a"))
            << notSo;
    }
}

TEST(RoleBasedViews, AViewThatDoesNotSayIsNotRoleBased) {
    EngineCase on = onViews("<securityView id=\"v\">" + clerk + "</securityView>");
    EXPECT_TRUE(on.includes("a"));
}

TEST(RoleBasedViews, ARoleBasedViewCanBeRequestedToo) {
    EngineCase on("<securityView id=\"v\" roleBased=\"true\">" + clerk + set("included", "a") +
                      "</securityView>",
                  {"v"}, {"clerk"});
    EXPECT_TRUE(on.includes("a"));
    EngineCase without("<securityView id=\"v\" roleBased=\"true\">" + clerk + set("included", "a") +
                           "</securityView>",
                       {"v"}, {"boss"});
    EXPECT_FALSE(without.includes("a"));
}
