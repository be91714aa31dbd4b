#include "host/insight/AccessStory.h"

#include "host/import/xml/ModelLoader.h"

#include <ostream>

#include <gtest/gtest.h>

namespace {

using Reason = VexAccessReason;
using Role = VexViewRole;

/// Two views of the model have names, one has none.
std::shared_ptr<vex::Model const> const& viewsModel() {
    static auto const loaded = vex::loadModelText(R"(<model defaultLocale="en"><securityViews>
      <securityView id="v1" name="Clerks"/><securityView id="v2"/>
      <securityView id="v3" name="Everyone"/></securityViews></model>)",
                                                  "m.model.xml");
    return loaded;
}

constexpr VexViewMention includedBy(std::size_t view) {
    return {view, true, false, false};
}
constexpr VexViewMention excludedBy(std::size_t view) {
    return {view, false, true, false};
}
constexpr VexViewMention hiddenBy(std::size_t view) {
    return {view, false, false, true};
}

/// v1 and v2 are in force, for the roles that the user holds; v3 is the default
/// view.
VexAccessExplanation const access{{{"v1", "clerk", Role::RoleHeld, true},
                                   {"v2", "guest", Role::RoleHeld, true},
                                   {"v3", "", Role::DefaultView, false}},
                                  {}};

vex::AccessStory storyOf(VexAccessExplanation const& told) {
    return {*viewsModel(), viewsModel()->defaultLocale(), told};
}

std::string verdict(Reason reason, std::vector<VexViewMention> mentions) {
    return storyOf(access).verdictOf({"x", false, reason, std::move(mentions)});
}

TEST(AccessStory, SaysThatNobodyIsRestricted) {
    EXPECT_EQ(verdict(Reason::Unrestricted, {}), "shown: nobody is restricted on this model path");
}

TEST(AccessStory, NamesTheViewsInForceThatDoNotIncludeAnObject) {
    EXPECT_EQ(verdict(Reason::NotInViews, {}),
              "hidden: not among the included objects of the views in force (v1 Clerks, v2)");
}

TEST(AccessStory, NamesTheViewsThatIncludeAnObjectWhenNoViewIsRoleBased) {
    EXPECT_EQ(verdict(Reason::NoRoleBasedViews, {includedBy(0), includedBy(2)}),
              "shown: included by the views in force (v1 Clerks), and no view of the model is role "
              "based");
}

TEST(AccessStory, SaysThatListsAreLeftOutOfAccountWhenNoneInForceIncludesAShownObject) {
    EXPECT_EQ(verdict(Reason::NoRoleBasedViews, {includedBy(2)}),
              "shown: the views' lists are left out of account, and no view of the model is role "
              "based");
}

TEST(AccessStory, NamesTheRolesThatIncludeAnObject) {
    EXPECT_EQ(verdict(Reason::RoleIncludes, {includedBy(0), includedBy(1)}),
              "shown: role clerk includes it (view v1 Clerks), role guest includes it (view v2)");
}

TEST(AccessStory, SaysWhichExclusionsARoleComesBefore) {
    EXPECT_EQ(verdict(Reason::RoleIncludes, {includedBy(0), excludedBy(1)}),
              "shown: role clerk includes it (view v1 Clerks), which comes before the exclusion by "
              "v2");
    EXPECT_EQ(verdict(Reason::RoleIncludes, {includedBy(0), excludedBy(2)}),
              "shown: role clerk includes it (view v1 Clerks), which comes before the default "
              "view's exclusion (v3 Everyone)");
}

TEST(AccessStory, NamesTheRolesThatExcludeAnObject) {
    EXPECT_EQ(verdict(Reason::RoleExcludes, {excludedBy(0), hiddenBy(1)}),
              "hidden: role clerk excludes it (view v1 Clerks)");
}

TEST(AccessStory, NamesTheDefaultViewThatExcludesAnObject) {
    EXPECT_EQ(verdict(Reason::DefaultExcludes, {excludedBy(2)}),
              "hidden: the default view (v3 Everyone) excludes it, and no view of a role that the "
              "user holds includes it");
}

TEST(AccessStory, NamesTheDefaultViewThatAllowsAnObject) {
    EXPECT_EQ(verdict(Reason::DefaultAllows, {includedBy(1)}),
              "shown: included by the views in force (v2), and neither the default view (v3 "
              "Everyone) nor a view of a role that the user holds excludes it");
}

TEST(AccessStory, NamesTheRolesThatHideAnObject) {
    EXPECT_EQ(verdict(Reason::RoleHides, {hiddenBy(0)}),
              "hidden: role clerk hides it (view v1 Clerks), and the model has no default view");
}

TEST(AccessStory, SaysThatNoRoleIncludesAnObject) {
    EXPECT_EQ(verdict(Reason::RoleDoesNotInclude, {}),
              "hidden: no view of a role that the user holds includes it, and the model has no "
              "default view");
}

struct Part {
    VexExplainedView view;
    char const* text;
};

void PrintTo(Part const& part, std::ostream* out) {
    *out << part.text;
}

class PartsOfViews : public testing::TestWithParam<Part> {};

TEST_P(PartsOfViews, SayWhetherAViewCountsAndWhy) {
    EXPECT_EQ(storyOf(access).partOf(GetParam().view), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    AccessStory, PartsOfViews,
    testing::Values(
        Part{{"v1", "", Role::NotRoleBased, true}, "in force; not role based"},
        Part{{"v1", "", Role::NotRoleBased, false},
             "not in force: not granted to the user; not role based"},
        Part{{"v1", "clerk", Role::RoleHeld, true},
             "in force; role based, and the user holds role clerk"},
        Part{{"v1", "clerk", Role::RoleNotHeld, true},
             "in force; role based, and the user does not hold role clerk, its first member's"},
        Part{{"v1", "", Role::DefaultView, true},
             "in force; the default view, being role based without members: what it excludes "
             "counts for everybody"},
        Part{{"v1", "", Role::ReplacedDefault, true},
             "in force; role based without members, but replaced as the default view by a later "
             "one"}));

TEST(AccessStory, TellsWhatEachViewSaysInTheOrderOfTheMentions) {
    VexExplainedObject const object{
        "x", false, Reason::NotInViews, {{2, true, true, true}, excludedBy(0), includedBy(1)}};
    EXPECT_EQ(storyOf(access).mentionsOf(object),
              (std::vector<std::string>{"v3 Everyone includes, excludes, hides it",
                                        "v1 Clerks excludes it", "v2 includes it"}));
    EXPECT_EQ(storyOf(access).mentionsOf({"y", false, Reason::NotInViews, {}}),
              std::vector<std::string>{});
}

TEST(AccessStory, CallsAViewByIdAndNameAndOneThatTheModelLacksById) {
    EXPECT_EQ(storyOf(access).nameOf({"v1", "", Role::NotRoleBased, true}), "v1 Clerks");
    EXPECT_EQ(storyOf(access).nameOf({"v2", "", Role::NotRoleBased, true}), "v2");
    EXPECT_EQ(storyOf(access).nameOf({"v9", "", Role::NotRoleBased, true}), "v9");
}

TEST(AccessStory, HasACodeForEachRule) {
    EXPECT_STREQ(vex::codeOf(Reason::Unrestricted), "unrestricted");
    EXPECT_STREQ(vex::codeOf(Reason::NotInViews), "not-in-views");
    EXPECT_STREQ(vex::codeOf(Reason::NoRoleBasedViews), "no-role-based-views");
    EXPECT_STREQ(vex::codeOf(Reason::RoleIncludes), "role-includes");
    EXPECT_STREQ(vex::codeOf(Reason::RoleExcludes), "role-excludes");
    EXPECT_STREQ(vex::codeOf(Reason::DefaultExcludes), "default-excludes");
    EXPECT_STREQ(vex::codeOf(Reason::DefaultAllows), "default-allows");
    EXPECT_STREQ(vex::codeOf(Reason::RoleHides), "role-hides");
    EXPECT_STREQ(vex::codeOf(Reason::RoleDoesNotInclude), "role-does-not-include");
}

TEST(AccessStory, HasACodeForEachPartThatAViewPlays) {
    EXPECT_STREQ(vex::codeOf(Role::NotRoleBased), "not-role-based");
    EXPECT_STREQ(vex::codeOf(Role::RoleHeld), "role-held");
    EXPECT_STREQ(vex::codeOf(Role::RoleNotHeld), "role-not-held");
    EXPECT_STREQ(vex::codeOf(Role::DefaultView), "default-view");
    EXPECT_STREQ(vex::codeOf(Role::ReplacedDefault), "replaced");
}

} // namespace
