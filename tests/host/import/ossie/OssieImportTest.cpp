#include "host/import/ossie/OssieImport.h"

#include "tests/host/import/ImportedSource.h"

#include <string_view>

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// An Ossie document, imported from a text as the file "m.yaml".
class ImportedOssie : public ImportedSource {
public:
    explicit ImportedOssie(std::string_view yaml) {
        import({.source = "m.yaml", .name = "m"},
               [&](vex::ImportWork& work) { vex::importOssieText(yaml, work);
    });
}

/// A model "M" of a dataset "D" with a field "F", and more of each.
static ImportedOssie
of(std::string const& field, std::string const& dataset = "", std::string const& model = "") {
    return ImportedOssie("version: 0.2.0\nsemantic_model:\n- {name: M, datasets: [{name: D, "
                         "source: d, fields: [{name: F" +
                         field + "}]" + dataset + "}]" + model + "}\n");
}
}; // namespace

TEST(OssieImport, MakesNamespacesSubjectsAndItems) {
    auto const imported = ImportedOssie::of(
        ", datatype: Decimal, label: money, description: What it is", ", description: Some");
    EXPECT_THAT(imported.model(), HasSubstr(R"(
  <namespace id="model:[M]" name="M">
    <querySubject id="dataset:[M].[D]" name="D" description="Some" source="d">
      <queryItem id="field:[M].[D].[F]" name="F" datatype="decimal" label="money" description="What it is" usage="fact"/>
    </querySubject>
  </namespace>
)"));
    EXPECT_THAT(imported.seenBy("owner"),
                ElementsAre("model:[M]", "dataset:[M].[D]", "field:[M].[D].[F]"));
}

TEST(OssieImport, TellsUsageByKeysRelationshipsTypesAndDimensions) {
    auto const usage = [](std::string const& field, std::string const& dataset = "",
                          std::string const& model = "") {
        std::string const text = ImportedOssie::of(field, dataset, model).model();
        std::size_t const start = text.find("usage=\"") + 7;
        return text.substr(start, text.find('"', start) - start);
    };
    EXPECT_EQ(usage(", datatype: Integer"), "fact");
    EXPECT_EQ(usage(", datatype: Integer, dimension: {is_time: true}"), "attribute");
    EXPECT_EQ(usage(", datatype: String"), "attribute");
    EXPECT_EQ(usage(", datatype: Integer", ", primary_key: [F]"), "identifier");
    EXPECT_EQ(usage(", datatype: Integer", ", unique_keys: [[f]]"), "identifier");
    EXPECT_EQ(usage(", expression: {dialects: [{dialect: ANSI_SQL, expression: c}]}",
                    ", primary_key: [c]"),
              "identifier"); // keys name columns
    EXPECT_EQ(usage("", "",
                    ", relationships: [{name: r, from: D, to: D, from_columns: [F], "
                    "to_columns: [F]}]"),
              "identifier");
}

TEST(OssieImport, SaysTypesInTheWordsOfModels) {
    EXPECT_THAT(ImportedOssie::of(", datatype: DateTimeTz").model(),
                HasSubstr("datatype=\"dateTime\""));
    auto const opaque = ImportedOssie::of(", datatype: Opaque");
    EXPECT_THAT(opaque.model(), Not(HasSubstr("datatype")));
    EXPECT_EQ(opaque.reasonFor("field.datatype"), "a model has no word for this type");
}

TEST(OssieImport, TakesTheExpressionOfTheMainDialectAndKeepsOthers) {
    auto const imported = ImportedOssie::of(
        ", expression: {dialects: [{dialect: MDX, expression: m}, {dialect: ANSI_SQL, expression: "
        "a}, {dialect: ANSI_SQL, expression: b}]}");
    EXPECT_THAT(imported.model(), HasSubstr("expression=\"a\" expression.MDX=\"m\""));
    EXPECT_EQ(imported.reasonFor("dialect"), "the expression has one in this dialect already");
}

TEST(OssieImport, MakesDescriptionsOfContext) {
    EXPECT_THAT(ImportedOssie::of(", description: d, ai_context: c").model(),
                HasSubstr("description=\"d&#10;c\""));
    EXPECT_THAT(ImportedOssie::of(", ai_context: {instructions: i, synonyms: [a, b], examples: "
                                  "[e], own: x}")
                    .model(),
                HasSubstr("description=\"i&#10;Synonyms: a, b&#10;Examples: e\""));
    EXPECT_EQ(ImportedOssie::of(", ai_context: {own: x}").reasonFor("ai_context.own"),
              "this import does not know it");
}

TEST(OssieImport, KeepsExtensionsAsProperties) {
    auto const imported = ImportedOssie::of(
        ", custom_extensions: [{vendor_name: DBT, data: '{}'}, {vendor_name: DBT, data: x}, "
        "{vendor_name: 'A]B c', data: y}, {vendor_name: E, data: [{f: g}]}]");
    EXPECT_THAT(imported.model(), HasSubstr(R"(extension.DBT="{}" extension.DBT.2="x")"));
    EXPECT_THAT(imported.model(), HasSubstr(R"(<property name="extension.A]B c">y</property>)"));
    EXPECT_EQ(imported.reasonFor("extension"), "it has no text");
}

TEST(OssieImport, MakesRelationshipsBetweenFieldsOrColumns) {
    ImportedOssie const imported(R"(version: 0.2.0
semantic_model:
- name: M
  datasets:
  - name: D
    source: d
    fields: [{name: "F]", expression: {dialects: [{dialect: ANSI_SQL, expression: c}]}}]
  - {name: E, source: e}
  relationships:
  - {name: r, from: D, to: E, from_columns: [c, x], to_columns: [k, y], ai_context: why}
  - {name: s, from: D, to: nobody, from_columns: [c], to_columns: [k]}
  - {name: t, from: D, to: E, from_columns: [c, c], to_columns: [k]}
)");
    EXPECT_THAT(imported.model(),
                HasSubstr(R"(<relationship id="relationship:[M].[r]" name="r" left="[M].[D]" )"
                          R"(leftCardinality="0..n" right="[M].[E]" rightCardinality="0..1" )"
                          R"(expression="[M].[D].[F]]] = E.k and D.x = E.y" description="why"/>)"));
    EXPECT_EQ(imported.account().mappedOf("relationship"), 1U);
    EXPECT_EQ(imported.account().readOf("relationship"), 3U);
    EXPECT_EQ(imported.account().readOf("joined column"), 4U);
    EXPECT_EQ(imported.account().mappedOf("joined column"), 1U);
}

TEST(OssieImport, MakesCalculationsOfMetrics) {
    auto const imported = ImportedOssie::of(
        "", "",
        ", metrics: [{name: Σ, datatype: Float, expression: {dialects: [{dialect: ANSI_SQL, "
        "expression: sum(D.F)}]}, description: All}]");
    EXPECT_THAT(imported.model(),
                HasSubstr("<calculation id=\"metric:[M].[Σ]\" name=\"Σ\" datatype=\"double\" "
                          "usage=\"fact\" expression=\"sum(D.F)\" description=\"All\"/>"));
}

TEST(OssieImport, ReadsTheSemanticModelThatAnOntologyMapsTo) {
    ImportedOssie const imported(R"(version: 0.2.0.dev0
name: O
ontology: [{concept: A}, {concept: B}]
ontology_mappings:
- name: x
  semantic_model: {name: M, datasets: [{name: D, source: d}]}
  concept_mappings: [{concept: A}]
)");
    EXPECT_THAT(imported.seenBy("owner"), ElementsAre("model:[M]", "dataset:[M].[D]"));
    EXPECT_EQ(imported.account().readOf("concept"), 2U);
    EXPECT_EQ(imported.account().mappedOf("concept"), 0U);
    EXPECT_EQ(imported.account().readOf("concept mapping"), 1U);
}

TEST(OssieImport, TellsOfKeysThatItDoesNotKnowAndOfOtherVersions) {
    auto const imported = ImportedOssie::of(", what: ever");
    EXPECT_EQ(imported.reasonFor("field.what"), "this import does not know it");
    EXPECT_FALSE(imported.notes("version"));
    ImportedOssie const old("version: 0.1\nsemantic_model: [{name: M}]\n");
    EXPECT_TRUE(old.isWritten());
    EXPECT_TRUE(old.notes("the document is of version 0.1"));
}

TEST(OssieImport, RefusesWhatItCannotUseWhereItStands) {
    auto const errorsOf = [](std::string_view yaml) { return ImportedOssie(yaml).errors(); };
    EXPECT_THAT(errorsOf(""), Contains(HasSubstr("m.yaml: error: the source holds nothing")));
    EXPECT_THAT(errorsOf("version: 0.2\n"), Contains(HasSubstr("no \"semantic_model\"")));
    EXPECT_THAT(errorsOf("[]"), Contains(HasSubstr("m.yaml:1:1: error: a document is")));
    EXPECT_THAT(errorsOf("semantic_model:\n  - datasets: []\n"),
                Contains(HasSubstr("m.yaml:2:5: error: the semantic model has no \"name\"")));
    EXPECT_THAT(errorsOf("semantic_model:\n- name: M\n  datasets: [{source: x}]\n"),
                Contains(HasSubstr("m.yaml:3:14: error: the dataset has no \"name\"")));
    EXPECT_THAT(errorsOf("semantic_model:\n- name: M\n  datasets: no\n"),
                Contains(HasSubstr("m.yaml:3:13: error: \"datasets\"")));
}

TEST(OssieImport, GivesEachOfTwoThingsOfOneNameAnIdOfItsOwn) {
    ImportedOssie const imported(
        "version: 0.2\nsemantic_model: [{name: M, datasets: [{name: D}, {name: D}]}, {name: M}]\n");
    EXPECT_TRUE(imported.isWritten());
    EXPECT_THAT(imported.seenBy("owner"),
                ElementsAre("model:[M]", "dataset:[M].[D]", "dataset:[M].[D]~2", "model:[M]~2"));
    EXPECT_THAT(imported.errors(), IsEmpty());
}

} // namespace
