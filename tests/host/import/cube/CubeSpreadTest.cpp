#include "tests/host/import/cube/ImportedCube.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A cube "c" whose dimension "secret" the role "r" may not see, with a measure "m" of this SQL
/// and one "n" that names it.
bool showsMeasure(std::string const& sql) {
    auto const imported =
        ImportedCube::of("  dimensions: [{name: secret}, {name: other}]\n  measures:\n"
                         "  - name: m\n    type: sum\n    sql: |\n      " +
                         sql +
                         "\n  - {name: n, type: number, sql: '{m} + 1'}\n"
                         "  access_policy: [{role: r, member_level: {excludes: [secret]}}]\n");
    auto const seen = imported.seenBy("r");
    bool const shows = std::find(seen.begin(), seen.end(), "measure:[c].[m]") != seen.end();
    bool const showsReader = std::find(seen.begin(), seen.end(), "measure:[c].[n]") != seen.end();
    EXPECT_EQ(shows, showsReader); // what names it goes with it
    return shows;
}

TEST(CubeSpread, HidesWhatNamesAHiddenMemberHoweverItIsWritten) {
    EXPECT_FALSE(showsMeasure("{secret}"));
    EXPECT_FALSE(showsMeasure("{CUBE.secret}"));
    EXPECT_FALSE(showsMeasure("{CUBE}.secret"));
    EXPECT_FALSE(showsMeasure("{c.secret}"));
    EXPECT_FALSE(showsMeasure("${c.secret}"));
    EXPECT_FALSE(showsMeasure("{TABLE}.secret"));
    EXPECT_FALSE(showsMeasure("{CUBE.secret.day}"));
    EXPECT_FALSE(showsMeasure("{FILTER_PARAMS.c.secret.filter('x')}"));
    EXPECT_FALSE(showsMeasure("-- {secret}"));
    EXPECT_TRUE(showsMeasure("{CUBE}.other"));
    EXPECT_TRUE(showsMeasure("{CUBE.other}"));
}

TEST(CubeSpread, TakesAColumnInPlainSqlForAColumn) {
    EXPECT_TRUE(showsMeasure("secret"));
}

TEST(CubeSpread, HidesWhatATemplateMakesWhereAnythingIsHidden) {
    EXPECT_FALSE(showsMeasure("{{ sql() }}"));
    auto const imported = ImportedCube::of(
        "  dimensions: [{name: a}]\n  measures: [{name: m, type: sum, sql: '{{ x }}'}]\n"
        "  access_policy: [{role: r}]\n");
    EXPECT_THAT(imported.seenBy("r"), Contains("measure:[c].[m]")); // nothing is hidden
}

TEST(CubeSpread, FollowsFiltersCasesAndGroups) {
    for (char const* const said :
         {"type: count, filters: [{sql: '{secret} = 1'}]",
          "type: number, sql: '1', group_by: [secret]",
          "type: string, case: {when: [{sql: '{secret}', label: x}], else: {label: y}}"}) {
        auto const imported = ImportedCube::of(
            "  dimensions: [{name: secret}]\n  measures: [{name: m, " + std::string(said) +
            "}]\n  access_policy: [{role: r, member_level: {includes: [m]}}]\n");
        EXPECT_THAT(imported.seenBy("r"), IsEmpty()) << said;
        EXPECT_TRUE(imported.notes("does not see 1 of the members that it is granted")) << said;
    }
}

TEST(CubeSpread, GoesAcrossCubes) {
    ImportedCube const imported(R"(cubes:
- name: c
  measures: [{name: m, type: sum, sql: "{d.secret}"}, {name: n, type: sum, sql: "{d}.secret"}, {name: o, type: count}]
- name: d
  dimensions: [{name: secret}, {name: x}]
  access_policy: [{role: "*", member_level: {includes: [x]}}]
)");
    EXPECT_THAT(imported.seenBy("*"), ElementsAre("model:model", "cube:[c]", "measure:[c].[o]",
                                                  "cube:[d]", "dimension:[d].[x]"));
}

TEST(CubeSpread, HidesLevelsOfHiddenDimensionsAndHierarchiesWithoutOne) {
    auto const imported = ImportedCube::of(R"(  dimensions: [{name: a}, {name: secret}]
  hierarchies: [{name: h, levels: [a, secret]}, {name: i, levels: [secret]}]
  access_policy: [{role: r, member_level: {includes: [a]}}]
)");
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("model:model", "cube:[c]", "dimension:[c].[a]",
                                                  "hierarchy:[c].[h]", "level:[c].[h].[a]"));
}

TEST(CubeSpread, HidesJoinsThatNameAHiddenMemberOrLeadToAHiddenCube) {
    auto const joinsSeen = [](std::string const& sql, std::string const& more) {
        ImportedCube const imported("cubes:\n- name: c\n  dimensions: [{name: a}]\n"
                                    "  joins: [{name: d, relationship: many_to_one, sql: '" +
                                    sql + "'}]\n- name: d\n  dimensions: [{name: b}, {name: e}]\n" +
                                    "  access_policy: [{role: '*', member_level: {includes: [" +
                                    more + "]}}]\n");
        auto const seen = imported.seenBy("*");
        return std::find(seen.begin(), seen.end(), "join:[c].[d]") != seen.end();
    };
    EXPECT_TRUE(joinsSeen("{CUBE}.x = {d.b}", "b"));
    EXPECT_FALSE(joinsSeen("{CUBE}.x = {d.b}", "e"));
    EXPECT_FALSE(joinsSeen("{CUBE}.x = {d}.y", ""));
}

TEST(CubeSpread, OfAViewTellsItsOwnPoliciesAlone) {
    // The cube shows the role nothing; the view shows it what its own policy says, but for what
    // names, through whatever it does not have, something that the view has and hides.
    ImportedCube const imported(R"(cubes:
- name: c
  dimensions: [{name: secret}, {name: plain}]
  measures:
  - {name: hop, type: sum, sql: "{secret}"}
  - {name: m, type: number, sql: "{hop} * 2"}
  - {name: k, type: sum, sql: "{plain}"}
  access_policy: [{role: admin}]
views:
- name: v
  cubes: [{join_path: c, includes: [secret, m, k]}]
  access_policy: [{role: r, member_level: {excludes: [secret]}}]
- name: w
  cubes: [{join_path: c, includes: [m]}]
  access_policy: [{role: r}]
)");
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("model:model", "view:[v]", "measure:[v].[k]",
                                                  "view:[w]", "measure:[w].[m]"));
    EXPECT_THAT(imported.model(), Not(HasSubstr("name=\"m\" datatype=\"decimal\" usage=\"fact\" "
                                                "expression=\"{hop} * 2\" title")));
}

TEST(CubeSpread, GivesARoleWhatItSeesWithWhatEverybodySees) {
    // "m" names "a", which everybody is granted, and "b", which the role is.
    auto const imported = ImportedCube::of(R"(  dimensions: [{name: a}, {name: b}]
  measures: [{name: m, type: number, sql: "{a} + {b}"}]
  access_policy:
  - {role: "*", member_level: {includes: [a, m]}}
  - {role: r, member_level: {includes: [b]}}
)");
    EXPECT_THAT(imported.seenBy("*"), ElementsAre("model:model", "cube:[c]", "dimension:[c].[a]"));
    EXPECT_THAT(imported.seenBy("r"), ElementsAre("dimension:[c].[b]", "measure:[c].[m]"));
}

TEST(CubeSpread, EndsWhereRolesMultiplyMembers) {
    vex::ImportLimits limits;
    limits.viewEntries = 50;
    std::string policies;
    for (char role = 'a'; role < 'k'; ++role) {
        policies += std::string("  - role: ") + role + '\n';
    }
    std::string const cube = "cubes:\n- name: c\n  dimensions: [{name: a}, {name: b}]\n";
    EXPECT_TRUE(ImportedCube(cube, limits).isWritten());
    EXPECT_THAT(
        ImportedCube(cube + "  access_policy:\n" + policies, limits).errors(),
        Contains(HasSubstr("the views of all roles would name objects more than 50 times")));
}

} // namespace
