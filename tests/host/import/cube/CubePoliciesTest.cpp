#include "tests/host/import/cube/ImportedCube.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A cube "c" with dimensions a, b, d, and these policies.
ImportedCube withPolicies(std::string const& policies) {
    return ImportedCube::of(
        "  dimensions: [{name: a}, {name: b}, {name: d}]\n  access_policy:" + policies + '\n');
}

/// The members that a user with one role sees, "*" included, as their names in one text.
std::string membersSeen(ImportedCube const& imported, std::string const& role) {
    std::string names;
    auto ids = imported.seenBy("*");
    if (role != "*") {
        for (std::string const& id : imported.seenBy(role)) {
            ids.push_back(id);
        }
    }
    std::sort(ids.begin(), ids.end());
    for (std::string const& id : ids) {
        bool const isMember = id.starts_with("dimension:") || id.starts_with("measure:");
        names += isMember ? id.substr(id.rfind('[') + 1, id.size() - id.rfind('[') - 2) : "";
    }
    return names;
}

TEST(CubePolicies, GrantTheMembersThatTheyInclude) {
    auto const imported =
        withPolicies(" [{role: r, member_level: {includes: [a, '{CUBE.b}', c.d]}}]");
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("model:model", "cube:[c]", "dimension:[c].[a]",
                                                  "dimension:[c].[b]", "dimension:[c].[d]"));
    EXPECT_THAT(imported.seenBy("*"), IsEmpty());
    EXPECT_THAT(imported.catalogue(), HasSubstr("<user name=\"r\">\n    <role>r</role>\n    "
                                                "<role>*</role>\n  </user>"));
}

TEST(CubePolicies, GrantAllButWhatTheyExclude) {
    EXPECT_EQ(membersSeen(withPolicies(" [{role: r, member_level: {excludes: [b]}}]"), "r"), "ad");
    EXPECT_EQ(membersSeen(
                  withPolicies(" [{role: r, member_level: {includes: '*', excludes: [b]}}]"), "r"),
              "ad");
    EXPECT_EQ(membersSeen(withPolicies(" [{role: r, member_level: {excludes: '*'}}]"), "r"), "");
    EXPECT_EQ(membersSeen(withPolicies(" [{role: r, member_level: {includes: []}}]"), "r"), "");
    EXPECT_EQ(membersSeen(withPolicies(" [{role: r, member_level: {includes: }}]"), "r"), "");
    EXPECT_EQ(membersSeen(withPolicies(" [{role: r, member_level: }]"), "r"), "");
    EXPECT_EQ(membersSeen(withPolicies(" [{role: r}]"), "r"), "abd");
}

TEST(CubePolicies, AddUp) {
    auto const imported = withPolicies(R"(
  - {role: "*", member_level: {includes: [a]}}
  - {role: r, member_level: {includes: [b]}}
  - {role: r, member_level: {excludes: [a, b]}}
  - {groups: [s, r], member_level: {includes: [a]}}
  - {group: s, member_level: {includes: [d]}})");
    EXPECT_EQ(membersSeen(imported, "*"), "a");
    EXPECT_EQ(membersSeen(imported, "r"), "abd");
    EXPECT_EQ(membersSeen(imported, "s"), "ad");
    EXPECT_EQ(imported.account().mappedOf("access policy"), 5U);
}

TEST(CubePolicies, GrantNothingWhenTheyCannotBeUnderstood) {
    struct Case {
        char const* policy;
        char const* reason;
    };
    for (Case const& each :
         {Case{"{role: r, conditions: [{if: x}]}", "under a condition"},
          Case{"{role: r, conditions: x}", "under a condition"},
          Case{"{role: '{{ r }}'}", "templates are not run"},
          Case{"{role: {{ r }}}", "templates are not run"},
          Case{"{role: r, member_level: {includes: ['{{ x }}']}}", "templates are not run"},
          Case{"{role: r, row_level: {filters: [{values: ['{% x %}']}]}}", "templates are not run"},
          Case{"'{{ policy() }}'", "templates are not run"},
          Case{"{role: '${x}'}", "code is not run"},
          Case{"{role: 'COMPILE_CONTEXT.role'}", "code is not run"},
          Case{"{role: '{ securityContext.role }'}", "code is not run"},
          Case{"{role: r, member_level: {includes: ['x => y']}}", "code is not run"},
          Case{"{member_level: {includes: '*'}}", "it names no role"},
          Case{"{role: r, group: r}", "it names no role"},
          Case{"{role: {a: b}}", "it names no role"},
          Case{"{role: []}", "it names no role"},
          Case{"{role: ''}", "it names no role"},
          Case{"{role: r, user_attribute: x}", "does not know"},
          Case{"{role: r, member_level: [a]}", "cannot be understood"},
          Case{"{role: r, member_level: {includes: {a: b}}}", "cannot be understood"},
          Case{"{role: r, member_level: {unless: x}}", "does not know"},
          Case{"r", "no list of policies"}}) {
        auto const imported = withPolicies(std::string("\n  - ") + each.policy +
                                           "\n  - {role: s, member_level: {includes: [a]}}");
        EXPECT_TRUE(imported.isWritten()) << each.policy;
        EXPECT_EQ(membersSeen(imported, "r"), "") << each.policy;
        EXPECT_EQ(membersSeen(imported, "s"), "a") << each.policy;
        EXPECT_THAT(imported.reasonFor("access policy"), HasSubstr(each.reason)) << each.policy;
    }
}

TEST(CubePolicies, ThatAreNoListLeaveTheCubeToNobody) {
    for (char const* const policies : {" '{{ all() }}'", " {{ all() }}", " {role: r}", " []", ""}) {
        auto const imported = withPolicies(policies);
        ASSERT_TRUE(imported.isWritten()) << policies;
        EXPECT_THAT(imported.seenBy("*"), IsEmpty()) << policies;
        EXPECT_THAT(imported.seenBy("r"), IsEmpty()) << policies;
        EXPECT_THAT(imported.seenBy("owner"), Not(IsEmpty())) << policies;
    }
}

TEST(CubePolicies, LeaveOpenWhatHasNone) {
    ImportedCube const imported(R"(cubes:
- {name: open, dimensions: [{name: a}]}
- {name: closed, dimensions: [{name: b}], access_policy: [{role: r}]}
)");
    EXPECT_THAT(imported.seenBy("*"),
                ElementsAre("model:model", "cube:[open]", "dimension:[open].[a]"));
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("cube:[closed]", "dimension:[closed].[b]"));
}

TEST(CubePolicies, AreThoseOfWhatACubeExtendsUnlessItHasItsOwn) {
    ImportedCube const imported(R"(cubes:
- {name: base, dimensions: [{name: a}], access_policy: [{role: r}]}
- {name: heir, extends: base}
- {name: own, extends: base, access_policy: [{role: s}]}
- {name: orphan, extends: elsewhere, dimensions: [{name: a}]}
)");
    EXPECT_THAT(imported.seenBy("*"), IsEmpty());
    EXPECT_THAT(imported.seenBy("r"), Contains("dimension:[heir].[a]"));
    EXPECT_THAT(imported.seenBy("r"), Not(Contains("dimension:[own].[a]")));
    EXPECT_THAT(imported.seenBy("s"), Contains("dimension:[own].[a]"));
    EXPECT_TRUE(imported.notes("nobody is granted anything in \"orphan\""));
}

TEST(CubePolicies, ShowNobodyWhatIsNotPublic) {
    ImportedCube const imported(R"(cubes:
- {name: c, public: false, dimensions: [{name: a}, {name: b, public: false}]}
- {name: d, dimensions: [{name: e}, {name: f, shown: false}], access_policy: [{role: r}]}
views:
- {name: v, cubes: [{join_path: c, includes: "*"}]}
)");
    EXPECT_THAT(imported.seenBy("*"), ElementsAre("model:model", "view:[v]", "dimension:[v].[a]"));
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("cube:[d]", "dimension:[d].[e]"));
}

TEST(CubePolicies, OfAMemberThatTheCubeLacksAreAnErrorWhereTheyExclude) {
    EXPECT_THAT(withPolicies("\n  - role: r\n    member_level: {excludes: [x]}").errors(),
                ElementsAre(HasSubstr("m.yml:6:30: error: a policy of \"c\" excludes the member "
                                      "\"x\", which it lacks; correct the name")));
    auto const included = withPolicies(" [{role: r, member_level: {includes: [x, a]}}]");
    EXPECT_EQ(membersSeen(included, "r"), "a");
    EXPECT_EQ(included.reasonFor("granted member"), "the cube or view has no such member");
    ImportedCube const incomplete(R"(views:
- name: v
  cubes: [{join_path: gone, includes: "*"}]
  access_policy: [{role: r, member_level: {excludes: [x]}}]
)");
    EXPECT_THAT(incomplete.reasonFor("access policy"), HasSubstr("the source lacks"));
}

TEST(CubePolicies, TellOfRowFilters) {
    auto const imported =
        withPolicies(" [{role: r, row_level: {filters: [{member: a}]}, member_masking: {}}]");
    EXPECT_EQ(membersSeen(imported, "r"), "abd");
    EXPECT_THAT(imported.reasonFor("access policy.row_level"), HasSubstr("not which rows"));
    EXPECT_THAT(imported.reasonFor("access policy.member_masking"), HasSubstr("changes values"));
}

TEST(CubePolicies, ForEverybodyAloneNeedSomebody) {
    auto const imported = withPolicies(" [{role: '*', member_level: {includes: [a]}}]");
    EXPECT_EQ(membersSeen(imported, "*"), "a");
    EXPECT_THAT(imported.catalogue(), HasSubstr("<user name=\"anybody\">\n    <role>*</role>"));
}

} // namespace
