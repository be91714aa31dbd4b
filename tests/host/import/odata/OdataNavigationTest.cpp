#include "tests/host/import/odata/ImportedCsdl.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

std::string const shop = R"xml(
<EntityType Name="Order"><Key><PropertyRef Name="Id"/></Key><Property Name="Id" Type="Edm.Int32"/>
  <Property Name="Buyer" Type="Edm.Int32"/>
  <NavigationProperty Name="Customer" Type="Self.Customer" Nullable="false" Partner="Orders">
    <ReferentialConstraint Property="Buyer" ReferencedProperty="Id"/></NavigationProperty>
</EntityType>
<EntityType Name="Customer"><Key><PropertyRef Name="Id"/></Key><Property Name="Id" Type="Edm.Int32"/>
  <NavigationProperty Name="Orders" Type="Collection(Self.Order)"/>
</EntityType>)xml";

std::string const sets =
    R"xml(<EntityContainer Name="C"><EntitySet Name="Orders" EntityType="N.Order"/>
  <EntitySet Name="Customers" EntityType="N.Customer"/></EntityContainer>)xml";

TEST(OdataNavigation, IsOneRelationshipForBothOfItsEnds) {
    auto const imported = ImportedCsdl::ofSchema(shop + sets);
    EXPECT_THAT(
        imported.model(),
        HasSubstr(
            R"xml(      <relationship id="navigation:[N].[C].[Orders].[Customer]" )xml"
            R"xml(name="Orders.Customer → Customers" left="[C].[Orders]" leftCardinality="0..n" )xml"
            R"xml(right="[C].[Customers]" rightCardinality="1..1" )xml"
            R"xml(expression="[C].[Orders].[Buyer] = [C].[Customers].[Id]"/>)xml"));
    EXPECT_THAT(imported.model(), Not(HasSubstr("navigation:[N].[C].[Customers].[Orders]")));
    EXPECT_EQ(imported.account().mappedOf("NavigationProperty"), 2U);
    EXPECT_EQ(imported.account().mappedOf("ReferentialConstraint"), 1U);
}

TEST(OdataNavigation, MakesWhatIsJoinedIdentifiers) {
    EXPECT_THAT(ImportedCsdl::ofSchema(shop + sets).model(),
                HasSubstr(R"xml(name="Buyer" datatype="int32" usage="identifier")xml"));
}

TEST(OdataNavigation, IsShortcutsWhenAskedFor) {
    auto const imported = ImportedCsdl::withShortcuts(shop + sets);
    EXPECT_THAT(
        imported.model(),
        HasSubstr(
            R"xml(        <shortcut id="navigation:[N].[C].[Orders].[Customer]" name="Customer" )xml"
            R"xml(refobj="[C].[Customers]" cardinality="1..1"/>)xml"));
    EXPECT_THAT(
        imported.model(),
        HasSubstr(
            R"xml(        <shortcut id="navigation:[N].[C].[Customers].[Orders]" name="Orders" )xml"
            R"xml(refobj="[C].[Orders]" cardinality="0..n"/>)xml"));
    EXPECT_THAT(imported.model(), Not(HasSubstr("<relationship")));
    EXPECT_THAT(imported.reasonFor("ReferentialConstraint"), HasSubstr("not what is joined"));
}

TEST(OdataNavigation, FollowsBindingsWhereSeveralSetsHoldAType) {
    std::string const several = R"xml(<EntityContainer Name="C">
  <EntitySet Name="Orders" EntityType="N.Order">
    <NavigationPropertyBinding Path="Customer" Target="N.C/Old"/></EntitySet>
  <EntitySet Name="Drafts" EntityType="N.Order">
    <NavigationPropertyBinding Path="Self.Order/Customer" Target="New"/>
    <NavigationPropertyBinding Path="Other/Thing" Target="New"/></EntitySet>
  <EntitySet Name="Lost" EntityType="N.Order"/>
  <EntitySet Name="Old" EntityType="N.Customer"/><EntitySet Name="New" EntityType="N.Customer"/>
</EntityContainer>)xml";
    auto const imported = ImportedCsdl::ofSchema(shop + several);
    EXPECT_THAT(imported.model(),
                HasSubstr(R"xml(left="[C].[Orders]" leftCardinality="0..n" right="[C].[Old]")xml"));
    EXPECT_THAT(imported.model(),
                HasSubstr(R"xml(left="[C].[Drafts]" leftCardinality="0..n" right="[C].[New]")xml"));
    EXPECT_THAT(imported.model(), Not(HasSubstr("[C].[Lost]\" left")));
    EXPECT_EQ(imported.account().mappedOf("NavigationPropertyBinding"), 2U);
    EXPECT_EQ(imported.reasonFor("NavigationProperty"),
              "several sets hold its type, and no binding says which");
    EXPECT_THAT(imported.reasonFor("NavigationPropertyBinding"), HasSubstr("by this path"));
}

TEST(OdataNavigation, LeadsToATypeThatNoSetHolds) {
    auto const imported = ImportedCsdl::ofSchema(
        R"xml(<EntityType Name="A">
             <NavigationProperty Name="Parts" Type="Collection(N.B)" ContainsTarget="true"/></EntityType>
           <EntityType Name="B"/>
           <EntityContainer Name="C"><EntitySet Name="As" EntityType="N.A"/></EntityContainer>)xml");
    EXPECT_THAT(imported.model(),
                HasSubstr(R"(left="[C].[As]" leftCardinality="0..n" right="[N].[B]" )"
                          R"(rightCardinality="0..n" containsTarget="true"/>)"));
}

TEST(OdataNavigation, IsToldOfWhereItCannotBeMapped) {
    auto const imported = ImportedCsdl::ofSchema(
        R"xml(<ComplexType Name="A"><NavigationProperty Name="n" Type="N.Gone">
             <ReferentialConstraint Property="a/b" ReferencedProperty="c"/>
             <ReferentialConstraint Property="a" ReferencedProperty="c"/></NavigationProperty></ComplexType>)xml");
    EXPECT_EQ(imported.reasonFor("NavigationProperty"), "the document lacks its type");
    EXPECT_EQ(imported.account().readOf("ReferentialConstraint"), 2U);
    EXPECT_EQ(imported.account().mappedOf("ReferentialConstraint"), 0U);
}

} // namespace
