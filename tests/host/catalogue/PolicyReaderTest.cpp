#include "KRLException.h"
#include "host/catalogue/Policy.h"

#include <gtest/gtest.h>

namespace {

std::string problemOf(std::string const& yaml) {
    try {
        vex::readPolicyText(yaml, "p.yaml");
    } catch (KRLDocumentException const& problem) {
        return problem.what();
    }
    return "none";
}

TEST(PolicyReader, ReadsViewsGrantsUsersAndExpectations) {
    auto const policy = vex::readPolicyText(R"(views:
  clerks:
    name: {en: Clerks, de: Personal}
    include: ["[Sales]/**", "#x"]
    except: "**@usage=fact"
    spread: true
  boss:
    name: Boss
    roleBased: true
    members: [chief, head]
    include: "**"
    exclude: "#a"
    hide: "#b"
roles:
  clerk: [clerks]
  chief: boss
users:
  carl: [clerk, chief]
  nora:
expect:
  - {user: carl, sees: ["[Sales].[Orders]"], not: ["**@usage=fact"]}
  - {role: clerk, counts: {querySubject: 6}}
)",
                                            "p.yaml");
    ASSERT_EQ(policy->views.size(), 2U);
    vex::PolicyView const& clerks = policy->views[0];
    EXPECT_EQ(clerks.id, "clerks");
    EXPECT_EQ(clerks.place.line, 2U);
    EXPECT_EQ(clerks.place.column, 3U);
    EXPECT_EQ(clerks.names.at(1).second, "Personal");
    ASSERT_EQ(clerks.rules.size(), 3U);
    EXPECT_EQ(clerks.rules[1].text, "#x");
    EXPECT_EQ(clerks.rules[1].place.line, 4U);
    EXPECT_EQ(clerks.rules[1].place.column, 29U);
    EXPECT_EQ(clerks.rules[2].kind, vex::PolicyRule::Kind::Except);
    EXPECT_TRUE(clerks.spreads);
    EXPECT_FALSE(clerks.isRoleBased);
    vex::PolicyView const& boss = policy->views[1];
    EXPECT_EQ(boss.names.at(0).first, I18NLocale());
    EXPECT_TRUE(boss.isRoleBased);
    EXPECT_EQ(boss.members.at(1).text, "head");
    EXPECT_EQ(boss.rules.at(2).kind, vex::PolicyRule::Kind::Hide);
    ASSERT_EQ(policy->grants.size(), 2U);
    EXPECT_EQ(policy->grants[1].role.text, "chief");
    EXPECT_EQ(policy->grants[1].view, "boss");
    ASSERT_EQ(policy->users.size(), 2U);
    EXPECT_EQ(policy->users[0].roles.size(), 2U);
    EXPECT_TRUE(policy->users[1].roles.empty());
    ASSERT_EQ(policy->expectations.size(), 2U);
    EXPECT_EQ(policy->expectations[0].seesNot.at(0).text, "**@usage=fact");
    EXPECT_EQ(policy->expectations[1].counts.at(0).second, 6U);
    EXPECT_EQ(policy->findView("boss"), &boss);
    EXPECT_EQ(policy->findView("none"), nullptr);
}

TEST(PolicyReader, ReadsAPolicyWithoutAnything) {
    for (char const* const yaml : {"", "# later\n", "{}", "views:\nroles:\nusers:\nexpect:\n"}) {
        EXPECT_TRUE(vex::readPolicyText(yaml, "p.yaml")->views.empty()) << yaml;
    }
}

TEST(PolicyReader, SaysWhereAndWhatToWriteInstead) {
    EXPECT_EQ(problemOf("view:\n"),
              "p.yaml:1:1: a policy has no \"view\"; it holds: views, roles, users, expect");
    EXPECT_EQ(problemOf("- a"), "p.yaml:1:1: a policy holds: views, roles, users, expect");
    EXPECT_EQ(problemOf("views:\n  a:\n    includes: \"**\""),
              "p.yaml:3:5: a view has no \"includes\"; it holds: name, include, except, exclude, "
              "hide, spread, roleBased, members");
    EXPECT_EQ(problemOf("views:\n  a:\n    include: [Sales]"),
              "p.yaml:3:15: nothing is known to be meant by \"Sales\"; write a reference in "
              "brackets, #id, ** or a class with a colon, such as querySubject:");
    EXPECT_EQ(problemOf("views:\n  a:\n    include: [[Sales]]"),
              "p.yaml:3:15: a selector is a text; put it in quotes, such as \"[Sales]/**\"");
    EXPECT_EQ(problemOf("views:\n  a:\n    spread: yes"), "p.yaml:3:13: write true or false here");
    EXPECT_EQ(problemOf("views:\n  a:\n  a:\n"),
              "p.yaml:3:3: \"a\" stands here for the second time; put both into one");
    EXPECT_EQ(problemOf("views: {a: {members: [b]}}"),
              "p.yaml:1:23: a view with members is role based; write \"roleBased: true\"");
    EXPECT_EQ(problemOf("views: {a: {name: {xx: A}}}"),
              "p.yaml:1:20: the locale \"xx\" is unknown; write one like de or de_AT");
    EXPECT_EQ(problemOf("expect: [{sees: \"**\"}]"),
              "p.yaml:1:10: an expectation is about a user or a role; write one of the two");
    EXPECT_EQ(problemOf("expect: [{user: a}]"),
              "p.yaml:1:10: nothing is expected here; write sees, not or counts");
    EXPECT_EQ(problemOf("expect: [{user: a, counts: {x: -1}}]"),
              "p.yaml:1:32: a count is a number from 0, not \"-1\"");
    EXPECT_EQ(problemOf("roles:\n  a: \"b\\x01\""),
              "p.yaml:2:6: this text holds a character that no model can; remove it");
    EXPECT_EQ(problemOf("views: {}\n---\nviews: {}").substr(0, 13), "p.yaml:2:1: a");
}

TEST(PolicyReader, RefusesAliasesAndDeepNesting) {
    EXPECT_EQ(problemOf("views:\n  a: {include: &x [\"**\"]}\n  b: {include: *x}"),
              "p.yaml:3:16: an alias stands here; write out what it stands for, and put a text "
              "that begins with \"*\" in quotes");
    EXPECT_EQ(problemOf("views: " + std::string(60'000, '[')).substr(0, 8), "p.yaml:1");
}

TEST(PolicyReader, RefusesTagsWhichWouldSayWhatAValueIs) {
    for (char const* const yaml : {"!x {}", "views: !!map {}", "roles: {!!str a: b}",
                                   "roles: {a: !!str b}", "roles: {a: !!seq [b]}"}) {
        EXPECT_NE(problemOf(yaml).find("a tag stands here"), std::string::npos) << yaml;
    }
}

TEST(PolicyReader, RefusesMoreThanAModelCouldBeAskedFor) {
    std::string many = "views: {v: {include: [";
    for (std::size_t at = 0; at <= vex::PolicyLimits::wideSelectors; ++at) {
        many += "\"#a/**\",";
    }
    EXPECT_NE(problemOf(many + "]}}").find("at most 10000 selectors that mean many objects"),
              std::string::npos);
}

TEST(PolicyReader, ShortensWhatItRepeats) {
    EXPECT_LT(problemOf("views: {v: {include: '" + std::string(100'000, 'x') + "'}}").size(), 600U);
    EXPECT_LT(problemOf(std::string(900, 'x') + ": 1").size(), 600U);
}

TEST(PolicyReader, TellsAChangedTextByItsFingerprint) {
    EXPECT_EQ(vex::readPolicyText("{}", "a")->fingerprint,
              vex::readPolicyText("{}", "b")->fingerprint);
    EXPECT_NE(vex::readPolicyText("{}", "a")->fingerprint,
              vex::readPolicyText("{ }", "a")->fingerprint);
}

} // namespace
