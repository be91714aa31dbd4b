#include "tests/host/import/cube/ImportedCube.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST(CubeImport, MakesSubjectsItemsAndFilters) {
    auto const imported = ImportedCube::of(R"(  title: The C
  description: Some
  sql_table: t
  dimensions:
  - {name: id, type: number, sql: id, primary_key: true}
  - {name: at, type: time, sql: "{CUBE}.at", title: At, format: f, description: d, meta: {a: {b: x}, c: [1, 2]}}
  measures:
  - {name: count, type: count}
  - {name: sum, type: sum, sql: v, filters: [{sql: "{CUBE}.x > 1"}, {sql: y}]}
  - {name: ratio, type: number, sql: "{sum} / {count}"}
  segments:
  - {name: big, sql: "{CUBE}.v > 9"}
)");
    EXPECT_THAT(imported.model(), HasSubstr(R"x(
    <querySubject id="cube:[c]" name="c" title="The C" description="Some">
      <queryItem id="dimension:[c].[id]" name="id" datatype="decimal" usage="identifier" expression="id"/>
      <queryItem id="dimension:[c].[at]" name="at" title="At" datatype="dateTime" usage="attribute" expression="{CUBE}.at" format="f" description="d" meta.a.b="x" meta.c="1&#10;2"/>
      <queryItem id="measure:[c].[count]" name="count" aggregation="count" usage="fact"/>
      <queryItem id="measure:[c].[sum]" name="sum" aggregation="sum" usage="fact" expression="v" filter="({CUBE}.x &gt; 1) and (y)"/>
      <queryItem id="measure:[c].[ratio]" name="ratio" datatype="decimal" usage="fact" expression="{sum} / {count}"/>
      <filter id="segment:[c].[big]" name="big" expression="{CUBE}.v &gt; 9"/>
    </querySubject>
)x"));
    EXPECT_EQ(imported.reasonFor("cube.sql_table"), "it says where the data comes from");
}

TEST(CubeImport, SaysCasesAndPlacesAsExpressions) {
    EXPECT_THAT(ImportedCube::of(R"(  dimensions:
  - name: size
    type: string
    case: {when: [{sql: "{CUBE}.n = 1", label: one}, {sql: b, label: {sql: c}}], else: {label: many}}
)")
                    .model(),
                HasSubstr("expression=\"case when {CUBE}.n = 1 then 'one' when b then c else "
                          "'many' end\""));
    EXPECT_THAT(ImportedCube::of(R"(  dimensions:
  - {name: place, type: geo, latitude: {sql: a}, longitude: {sql: b}}
)")
                    .model(),
                HasSubstr("datatype=\"string\" usage=\"attribute\" expression=\"a, b\""));
}

TEST(CubeImport, MakesHierarchiesWithLevelsThatNameTheirDimensions) {
    ImportedCube const imported(R"(cubes:
- name: c
  dimensions: [{name: "x]"}, {name: y}]
  hierarchies: [{name: h, title: H, levels: ["x]", d.z, gone]}]
- name: d
  dimensions: [{name: z}]
)");
    EXPECT_THAT(imported.model(), HasSubstr(R"(
      <hierarchy id="hierarchy:[c].[h]" name="h" title="H">
        <level id="level:[c].[h].[x]]]" name="x]" expression="[m].[c].[x]]]"/>
)"));
    EXPECT_EQ(imported.reasonFor("level"), "the cube or view has no such member");
}

TEST(CubeImport, MakesRelationshipsOfJoins) {
    ImportedCube const imported(R"(cubes:
- name: c
  joins:
  - {name: d, relationship: belongsTo, sql: "{CUBE}.d = {d}.id"}
  - {name: gone, relationship: one_to_one, sql: x}
- name: d
  joins: [{name: c, relationship: one_to_many, sql: y}]
)");
    EXPECT_THAT(imported.model(),
                HasSubstr(R"(<relationship id="join:[c].[d]" name="c → d" left="[m].[c]" )"
                          R"(leftCardinality="0..n" right="[m].[d]" rightCardinality="0..1" )"
                          R"(expression="{CUBE}.d = {d}.id"/>)"));
    EXPECT_THAT(imported.model(), HasSubstr(R"(left="[m].[d]" leftCardinality="0..1" )"
                                            R"(right="[m].[c]" rightCardinality="0..n")"));
    EXPECT_EQ(imported.reasonFor("joined cube"), "the source has no such cube");
}

TEST(CubeImport, KeepsWhatIsNotPublicAsAProperty) {
    auto const imported = ImportedCube::of("  public: false\n  dimensions:\n"
                                           "  - {name: a, public: false}\n  - {name: b, shown: "
                                           "true}\n  - {name: d, public: '{{ x }}'}\n");
    EXPECT_THAT(imported.model(), HasSubstr("name=\"c\" isHidden=\"true\""));
    EXPECT_THAT(imported.model(), HasSubstr(R"(name="a" usage="attribute" isHidden="true"/>)"));
    EXPECT_THAT(imported.model(), HasSubstr(R"(name="b" usage="attribute"/>)"));
    EXPECT_THAT(imported.model(), HasSubstr(R"(name="d" usage="attribute" isHidden="true"/>)"));
    EXPECT_TRUE(imported.notes("something else than true or false"));
}

TEST(CubeImport, GivesACubeWhatItExtends) {
    ImportedCube const imported(R"(cubes:
- name: c
  extends: base
  dimensions: [{name: a, type: string}, {name: n}]
- name: base
  public: false
  dimensions: [{name: a, type: number}, {name: b, type: time}]
  joins: [{name: c, relationship: one_to_one, sql: x}]
)");
    EXPECT_THAT(imported.model(), HasSubstr(R"(
    <querySubject id="cube:[c]" name="c" isHidden="true">
      <queryItem id="dimension:[c].[a]" name="a" datatype="string" usage="attribute"/>
      <queryItem id="dimension:[c].[n]" name="n" usage="attribute"/>
      <queryItem id="dimension:[c].[b]" name="b" datatype="dateTime" usage="attribute"/>
    </querySubject>
)"));
    EXPECT_THAT(imported.model(), HasSubstr("id=\"join:[c].[c]\""));
    EXPECT_EQ(imported.account().readOf("dimension"), 4U);
    EXPECT_EQ(imported.account().readOf("inherited dimension"), 1U);
}

TEST(CubeImport, GivesViewsTheMembersThatTheyInclude) {
    ImportedCube const imported(R"(cubes:
- name: c
  dimensions: [{name: a, type: string, sql: x, title: A}, {name: b}, {name: e}]
- name: d
  measures: [{name: m, type: sum, sql: "{CUBE}.v"}, {name: n}]
views:
- name: v
  cubes:
  - join_path: c
    includes: [a, {name: b, alias: z, title: B}, gone]
  - {join_path: c.d, prefix: true, includes: "*", excludes: [n]}
  - {join_path: c.d, prefix: true, alias: D, includes: [m]}
  - {join_path: nobody, includes: "*"}
)");
    EXPECT_THAT(imported.model(), HasSubstr(R"(
    <querySubject id="view:[v]" name="v">
      <queryItem id="dimension:[v].[a]" name="a" title="A" datatype="string" usage="attribute"/>
      <queryItem id="dimension:[v].[z]" name="z" usage="attribute" title="B"/>
      <queryItem id="measure:[v].[d_m]" name="d_m" aggregation="sum" usage="fact"/>
      <queryItem id="measure:[v].[D_m]" name="D_m" aggregation="sum" usage="fact"/>
    </querySubject>
)"));
    EXPECT_EQ(imported.reasonFor("included member"), "the cube or view has no such member");
    EXPECT_EQ(imported.reasonFor("included cube"), "the source has no such cube");
}

TEST(CubeImport, PutsMembersIntoTheirFirstFolder) {
    ImportedCube const imported(R"(cubes:
- name: c
  dimensions: [{name: a}, {name: b}, {name: d}]
views:
- name: v
  cubes: [{join_path: c, includes: "*"}]
  folders:
  - name: F
    includes: [a, {name: "G]", includes: [b, a]}, gone]
)");
    EXPECT_THAT(imported.model(), HasSubstr(R"(
      <queryItemFolder id="folder:[v].[F]" name="F">
        <queryItemFolder id="folder:[v].[F].[G]]]" name="G]">
          <queryItem id="dimension:[v].[b]" name="b" usage="attribute"/>
        </queryItemFolder>
        <queryItem id="dimension:[v].[a]" name="a" usage="attribute"/>
      </queryItemFolder>
      <queryItem id="dimension:[v].[d]" name="d" usage="attribute"/>
)"));
    EXPECT_EQ(imported.account().readOf("member of a folder"), 4U);
    EXPECT_EQ(imported.account().mappedOf("member of a folder"), 2U);
}

TEST(CubeImport, TellsOfWhatItDoesNotMap) {
    auto const imported = ImportedCube::of(R"(  what: ever
  pre_aggregations: [{name: p}, {name: q}]
  measures: [{name: m, type: sum, sql: x, rolling_window: {trailing: unbounded}, drill_members: [a]}]
)");
    EXPECT_EQ(imported.reasonFor("cube.what"), "this import does not know it");
    EXPECT_EQ(imported.account().readOf("pre-aggregation"), 2U);
    EXPECT_THAT(imported.reasonFor("measure.rolling_window"), HasSubstr("windows"));
    EXPECT_EQ(imported.reasonFor("measure.drill_members"), "it is a way to details, no object");
}

TEST(CubeImport, RefusesWhatItCannotUseWithFileAndPlace) {
    auto const errorsOf = [](std::string const& yaml) {
        return ImportedCube({{"p/a.yml", "cubes: [{name: a}]\n"}, {"p/b.yml", yaml}}).errors();
    };
    EXPECT_THAT(errorsOf("views:\n- cubes: []\n"),
                Contains(HasSubstr("p/b.yml:2:3: error: the view has no \"name\"")));
    EXPECT_THAT(errorsOf("cubes: [{name: a}]\n"),
                Contains(HasSubstr("p/b.yml:1:9: error: there is a second cube or view \"a\"")));
    EXPECT_THAT(errorsOf("cubes:\n- name: b\n  dimensions: [{name: x}]\n  measures: [{name: x}]\n"),
                Contains(HasSubstr("p/b.yml:4:14: error: \"b\" has the member \"x\" twice")));
    EXPECT_THAT(errorsOf("cubes:\n- name: {{ x }}\n"),
                Contains(HasSubstr("p/b.yml:2:9: error: \"name\" of a cube is a template")));
    EXPECT_THAT(errorsOf("cubes:\n- name: b\n  measures: {{ x() }}\n"),
                Contains(HasSubstr("p/b.yml:3:13: error: \"measures\" of a cube is a template")));
    EXPECT_THAT(errorsOf("cubes:\n{% for a in b %}\n"), Contains(HasSubstr("p/b.yml:2:2: error:")));
    EXPECT_THAT(errorsOf("cubes: [{name: b, extends: d}, {name: d, extends: b}]\n"),
                Contains(HasSubstr("p/b.yml:1:9: error: \"b\" extends itself")));
    EXPECT_THAT(
        errorsOf("views: [{name: v, cubes: [{join_path: a, includes: '*', excludes: [x]}]}]"),
        Contains(HasSubstr("has no member \"x\" that the view could leave out")));
    EXPECT_THAT(errorsOf("cubes: [{name: b, description: \"\\x01\"}]\n"),
                Contains(HasSubstr("p/b.yml:1:9: error: a text holds U+0001")));
    EXPECT_THAT(ImportedCube("cubes: []\n").errors(),
                Contains(HasSubstr("the source has no cubes and no views")));
}

TEST(CubeImport, EndsWhereViewsMultiplyMembers) {
    std::string project = "cubes:\n- name: c\n  dimensions:\n";
    for (int number = 0; number < 20; ++number) {
        project += "  - name: d" + std::to_string(number) + '\n';
    }
    project += "views:\n";
    for (int number = 0; number < 5; ++number) {
        project +=
            "- {name: v" + std::to_string(number) + ", cubes: [{join_path: c, includes: '*'}]}\n";
    }
    vex::ImportLimits limits;
    limits.sourceValues = 120;
    EXPECT_TRUE(ImportedCube(project, limits).isWritten());
    limits.sourceValues = 119;
    EXPECT_THAT(ImportedCube(project, limits).errors(),
                Contains(HasSubstr("m.yml:29:22: error: with what stands for it in many places")));
}

TEST(CubeImport, GivesTheSameIdsInAnyFileAndOrder) {
    std::string const one = "cubes: [{name: c, dimensions: [{name: a}]}]\n";
    std::string const other = "views: [{name: v, cubes: [{join_path: c, includes: '*'}]}]\n";
    ImportedCube const first({{"a.yml", one}, {"b.yml", other}});
    ImportedCube const second({{"x.yml", other}, {"y.yml", one}});
    EXPECT_THAT(first.seenBy("owner"), testing::UnorderedElementsAreArray(second.seenBy("owner")));
    EXPECT_THAT(first.seenBy("owner"), ElementsAre("model:model", "cube:[c]", "dimension:[c].[a]",
                                                   "view:[v]", "dimension:[v].[a]"));
}

} // namespace
