#include "host/import/kinds/ImportKinds.h"
#include "tests/host/import/odata/ImportedCsdl.h"

#include <fstream>
#include <iterator>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string textOf(std::string const& file) {
    std::ifstream stream(std::string(VEX_SOURCE_DIR) + '/' + file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

vex::ImportOutcome importSample() {
    vex::ImportRequest request;
    request.source = std::string(VEX_SOURCE_DIR) + "/samples/import/library.csdl.xml";
    request.name = "library";
    return vex::runImport(*vex::findImportKind("odata"), request);
}

TEST(OdataImport, MakesTheModelThatWasWrittenByHandForTheSample) {
    auto const outcome = importSample();
    ASSERT_TRUE(outcome.documents.has_value());
    EXPECT_THAT(outcome.found, IsEmpty());
    EXPECT_EQ(outcome.documents->model, textOf("tests/host/import/odata/models/library.model.xml"));
}

TEST(OdataImport, AccountsForEveryKindOfThingInTheSample) {
    auto const outcome = importSample();
    struct Expected {
        char const* kind;
        std::size_t read;
        std::size_t mapped;
    };
    for (Expected const& expected :
         {Expected{"Reference", 3, 0}, Expected{"Include", 3, 3}, Expected{"Schema", 1, 1},
          Expected{"EntityType", 4, 4}, Expected{"ComplexType", 1, 1}, Expected{"EnumType", 1, 1},
          Expected{"Member", 2, 2}, Expected{"TypeDefinition", 1, 1}, Expected{"Property", 12, 12},
          Expected{"NavigationProperty", 3, 3}, Expected{"ReferentialConstraint", 1, 1},
          Expected{"EntitySet", 3, 3}, Expected{"Singleton", 1, 1},
          Expected{"NavigationPropertyBinding", 3, 3}, Expected{"Function", 1, 0},
          Expected{"FunctionImport", 1, 0}, Expected{"Annotations", 1, 1},
          Expected{"@Org.OData.Core.V1.Description", 2, 2},
          Expected{"@Org.OData.Capabilities.V1.InsertRestrictions/Insertable", 1, 1}}) {
        EXPECT_EQ(outcome.account.readOf(expected.kind), expected.read) << expected.kind;
        EXPECT_EQ(outcome.account.mappedOf(expected.kind), expected.mapped) << expected.kind;
    }
    for (auto const& omission : outcome.account.omissions()) {
        EXPECT_NE(omission.reason, "this import does not know it") << omission.kind;
    }
}

TEST(OdataImport, InheritsPropertiesKeysAndNavigationAndLetsATypeSayThemAgain) {
    auto const imported = ImportedCsdl::ofSchema(R"xml(
<EntityType Name="A"><Key><PropertyRef Name="K"/></Key><Property Name="K" Type="Edm.Guid"/>
  <Property Name="P" Type="Edm.PrimitiveType"/></EntityType>
<EntityType Name="B" BaseType="Self.A"><Property Name="P" Type="Edm.Date"/>
  <Property Name="Q" Type="Edm.Single"/></EntityType>
<EntityContainer Name="C"><EntitySet Name="Bs" EntityType="N.B"/></EntityContainer>)xml");
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(
      <querySubject id="set:[N].[C].[Bs]" name="Bs" entityType="N.B" baseType="N.A">
        <queryItem id="property:[N].[C].[Bs].[K]" name="K" datatype="string" sourceType="Edm.Guid" usage="identifier"/>
        <queryItem id="property:[N].[C].[Bs].[P]" name="P" datatype="date" usage="attribute"/>
        <queryItem id="property:[N].[C].[Bs].[Q]" name="Q" datatype="float" usage="attribute"/>
      </querySubject>
)xml"));
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(<querySubject id="type:[N].[A]" name="A">)xml"));
    EXPECT_THAT(imported.model(), Not(HasSubstr(R"xml(id="type:[N].[B]")xml")));
}

TEST(OdataImport, NamesDatatypesAsModelsDoAndKeepsThoseOfTheService) {
    auto const imported = ImportedCsdl::ofSchema(R"xml(<ComplexType Name="T">
  <Property Name="a" Type="Edm.DateTimeOffset"/><Property Name="b" Type="Collection(Edm.SByte)"/>
  <Property Name="c" Type="Self.E"/><Property Name="d" Type="Self.Short"/>
</ComplexType><EnumType Name="E" IsFlags="true"/>
<TypeDefinition Name="Short" UnderlyingType="Edm.String" MaxLength="5"/>)xml");
    for (
        char const* const item :
        {R"(name="a" datatype="dateTime" usage="attribute"/>)",
         R"(name="b" datatype="int16" sourceType="Edm.SByte" usage="attribute" isCollection="true"/>)",
         R"(name="c" datatype="string" sourceType="N.E" usage="attribute"/>)",
         R"(name="d" datatype="string" sourceType="N.Short" usage="attribute" maxLength="5"/>)",
         R"(<enumeration id="type:[N].[E]" name="E" isFlags="true"/>)"}) {
        EXPECT_THAT(imported.model(), HasSubstr(item));
    }
}

TEST(OdataImport, KeepsCaseAndScriptOfNamesAndPathsThatCannotMeet) {
    auto const imported = ImportedCsdl::ofSchema(
        R"xml(<ComplexType Name="Ä]"><Property Name="店" Type="Edm.Int64"/></ComplexType>
           <ComplexType Name="ä]"/>)xml");
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(id="property:[N].[Ä]]].[店]" name="店")xml"));
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(id="type:[N].[ä]]]" name="ä]")xml"));
}

TEST(OdataImport, TellsNamespacesOfOneNameApart) {
    auto const imported = ImportedCsdl::ofSchema(
        R"xml(<ComplexType Name="T"/><EntityType Name="E"/><EntityContainer Name="N">
           <EntitySet Name="Es" EntityType="Self.E"/></EntityContainer>)xml");
    EXPECT_THAT(imported.model(),
                HasSubstr(R"xml(<namespace id="namespace:[N].[N]" name="N.N">)xml"));
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(<namespace id="namespace:[N]" name="N">)xml"));
}

TEST(OdataImport, TellsOfWhatStandsInOtherDocuments) {
    auto const imported = ImportedCsdl::ofSchema(
        R"xml(<EntityType Name="E" BaseType="Other.Base"><Property Name="p" Type="Other.Money"/>
             <NavigationProperty Name="n" Type="Other.Thing"/></EntityType>
           <Annotations Target="Other.Thing"><Annotation Term="Core.Description" String="x"/></Annotations>
           <EntityContainer Name="C"><EntitySet Name="Os" EntityType="Other.Thing"/></EntityContainer>)xml",
        vocabularies);
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(name="p" sourceType="Other.Money")xml"));
    EXPECT_THAT(imported.reasonFor("Reference"), HasSubstr("nothing but the source is read"));
    EXPECT_THAT(imported.reasonFor("EntitySet"), HasSubstr("another document"));
    EXPECT_THAT(imported.reasonFor("NavigationProperty"), HasSubstr("another document"));
    EXPECT_THAT(imported.reasonFor("@Org.OData.Core.V1.Description"),
                HasSubstr("another document"));
    ASSERT_THAT(imported.account().notes(), Not(IsEmpty()));
    EXPECT_THAT(imported.account().notes().front().text,
                HasSubstr("what it inherits there is missing"));
}

TEST(OdataImport, TellsOfWhatItDoesNotKnow) {
    auto const imported = ImportedCsdl::ofSchema(
        R"xml(<Gadget Name="g"/><x:Odd xmlns:x="urn:x"/><Action Name="A"><Parameter Name="p" Type="Edm.Int32"/></Action>
           <Term Name="T" Type="Edm.String"/>
           <ComplexType Name="T" Shiny="yes"/>)xml");
    EXPECT_EQ(imported.reasonFor("Gadget"), "this import does not know it");
    EXPECT_EQ(imported.reasonFor("ComplexType.Shiny"), "this import does not know it");
    EXPECT_EQ(imported.reasonFor("Odd"), "it is of another XML namespace");
    EXPECT_THAT(imported.reasonFor("Action"), HasSubstr("no object of a model"));
    EXPECT_THAT(imported.reasonFor("Term"), HasSubstr("vocabulary"));
}

TEST(OdataImport, RefusesWhatIsNoDescriptionWhereItIsNone) {
    EXPECT_THAT(ImportedCsdl("{}").errors(),
                ElementsAre(HasSubstr("s.xml:1:1: error: the text is not well-formed XML")));
    EXPECT_THAT(ImportedCsdl("<model/>").errors(),
                ElementsAre(HasSubstr("s.xml:1:9: error: this is no service description")));
    EXPECT_THAT(
        ImportedCsdl(
            R"xml(<Edmx Version="1.0" xmlns="http://docs.oasis-open.org/odata/ns/edmx"/>)xml")
            .errors(),
        ElementsAre(HasSubstr("only versions 4.0 and 4.01")));
    EXPECT_THAT(
        ImportedCsdl(
            R"xml(<Edmx Version="4.0" xmlns="http://docs.oasis-open.org/odata/ns/edmx"/>)xml")
            .errors(),
        ElementsAre(HasSubstr("has no schema")));
    EXPECT_THAT(ImportedCsdl("<!DOCTYPE x [<!ENTITY a \"b\">]><x/>").errors(),
                ElementsAre(HasSubstr("remove the DOCTYPE")));
}

struct Refused {
    char const* schema;
    char const* error;
};

class OdataRefusals : public testing::TestWithParam<Refused> {};

TEST_P(OdataRefusals, SayWhereAndWhatToDo) {
    EXPECT_THAT(ImportedCsdl::ofSchema(GetParam().schema).errors(),
                ElementsAre(HasSubstr(GetParam().error)));
}

INSTANTIATE_TEST_SUITE_P(
    OdataImport, OdataRefusals,
    testing::Values(
        Refused{"<EntityType/>",
                R"xml(s.xml:4:14: error: the element "EntityType" has no Name)xml"},
        Refused{R"xml(<ComplexType Name="T"><Property Name="p"/></ComplexType>)xml",
                R"xml(4:43: error: the element "Property" has no Type)xml"},
        Refused{R"xml(<EntityType Name="T"/><EntityType Name="T"/>)xml",
                R"xml(has two types "T")xml"},
        Refused{R"xml(<ComplexType Name="T"><Property Name="p" Type="Edm.Int32"/>
<Property Name="p" Type="Edm.Int32"/></ComplexType>)xml",
                R"xml(s.xml:5:38: error: the type "T" has two parts "p")xml"},
        Refused{
            R"xml(<EntityType Name="A" BaseType="N.B"/><EntityType Name="B" BaseType="N.A"/>)xml",
            "derives from itself"},
        Refused{R"xml(<EntityType Name="A" BaseType="N.Z"/>)xml",
                R"xml(derives from "N.Z", which the document lacks)xml"},
        Refused{R"xml(<EntityType Name="A" BaseType="N.B"/><ComplexType Name="B"/>)xml",
                "which is of another kind"},
        Refused{
            R"xml(<EntityContainer Name="C"><EntitySet Name="S" EntityType="N.Z"/></EntityContainer>)xml",
            R"xml(the set "S" is of the type "N.Z")xml"},
        Refused{
            R"xml(<ComplexType Name="T"><Property Name="p" Type="Edm.Int32" Nullable="no"/></ComplexType>)xml",
            R"xml(the attribute Nullable is "no"; write true or false)xml"},
        Refused{R"xml(<x:T/>)xml", "no xmlns:... declares the prefix"},
        Refused{R"xml(<Annotations/>)xml", R"xml(the element "Annotations" has no Target)xml"}));

TEST(OdataImport, GivesTheSameThingsTheSameIdsWhereverTheyStand) {
    std::string const one =
        R"xml(<ComplexType Name="A"><Property Name="p" Type="Edm.Int32"/></ComplexType>)xml";
    std::string const two = R"xml(<ComplexType Name="B"/>)xml";
    auto const before = ImportedCsdl::ofSchema(one + two);
    auto const after = ImportedCsdl::ofSchema(two + one);
    for (auto const* const imported : {&before, &after}) {
        EXPECT_THAT(imported->model(), HasSubstr(R"xml(id="property:[N].[A].[p]" name="p")xml"));
        EXPECT_THAT(imported->model(), HasSubstr(R"xml(id="type:[N].[B]" name="B")xml"));
    }
}

TEST(OdataImport, StaysInProportionWhereTypesInheritWithoutEnd) {
    std::string types =
        R"xml(<ComplexType Name="T0"><Property Name="p" Type="Edm.Int32"/></ComplexType>)xml";
    for (int number = 1; number < 6'000; ++number) {
        types += "<ComplexType Name=\"T" + std::to_string(number) + "\" BaseType=\"N.T" +
                 std::to_string(number - 1) + "\"/>";
    }
    EXPECT_THAT(ImportedCsdl::ofSchema(types).errors(),
                ElementsAre(HasSubstr("what types inherit makes the model too large")));
}

} // namespace
