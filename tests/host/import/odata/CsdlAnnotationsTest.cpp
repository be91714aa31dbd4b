#include "tests/host/import/odata/ImportedCsdl.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;

/// A complex type "T" with one property "p" that holds this.
ImportedCsdl ofProperty(std::string const& inside, std::string const& after = "") {
    return ImportedCsdl::ofSchema(
        R"xml(<ComplexType Name="T"><Property Name="p" Type="Edm.Int32">)xml" + inside +
            "</Property></ComplexType>" + after,
        vocabularies);
}

TEST(CsdlAnnotations, AreDescriptionsAndScreenTips) {
    auto const imported = ofProperty(
        R"xml(<Annotation Term="Core.Description" String="what it is"/>
           <Annotation Term="Org.OData.Core.V1.LongDescription"><String>more of it</String></Annotation>)xml");
    EXPECT_THAT(imported.model(),
                HasSubstr(R"xml( description="what it is" screenTip="more of it"/>)xml"));
}

TEST(CsdlAnnotations, MayStandApartUnderTheirTarget) {
    auto const imported = ofProperty("", R"xml(<Annotations Target="Self.T/p">
        <Annotation Term="Core.Description" String="from afar"/></Annotations>
        <Annotations Target="N"><Annotation Term="Core.Description" String="of all"/></Annotations>
        <Annotations Target="N.T/q"><Annotation Term="Core.Description" String="lost"/></Annotations>)xml");
    EXPECT_THAT(imported.model(),
                HasSubstr(R"xml(usage="attribute" description="from afar"/>)xml"));
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(name="N" description="of all">)xml"));
    EXPECT_EQ(imported.reasonFor("@Org.OData.Core.V1.Description"),
              "no object stands for its target");
}

TEST(CsdlAnnotations, CountWhereTheyStandFirst) {
    auto const imported = ofProperty(R"xml(<Annotation Term="Core.Description" String="one"/>)xml",
                                     R"xml(<Annotations Target="N.T/p">
        <Annotation Term="Core.Description" String="two"/></Annotations>)xml");
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(description="one")xml"));
    EXPECT_EQ(imported.reasonFor("@Org.OData.Core.V1.Description"),
              "the same is said of it before");
}

TEST(CsdlAnnotations, ArePropertiesWhereTermsHaveNoPlaceOfTheirOwn) {
    auto const imported = ofProperty(
        R"xml(<Annotation Term="Core.Permissions" EnumMember="Core.Permission/Read Core.Permission/Write"/>
           <Annotation Term="Core.Computed"/><Annotation Term="Core.Immutable" Bool="false"/>)xml");
    EXPECT_THAT(
        imported.model(),
        HasSubstr(R"xml( permissions="Read Write" isComputed="true" isImmutable="false"/>)xml"));
}

TEST(CsdlAnnotations, SayWhatASetIsCapableOf) {
    auto const imported = ImportedCsdl::ofSchema(
        R"xml(<EntityType Name="E"/><EntityContainer Name="C"><EntitySet Name="S" EntityType="N.E">
             <Annotation Term="Cap.DeleteRestrictions"><Record>
               <PropertyValue Property="Deletable"><Bool>false</Bool></PropertyValue>
               <PropertyValue Property="MaxLevels" Int="3"/></Record></Annotation>
           </EntitySet></EntityContainer>)xml",
        vocabularies);
    EXPECT_THAT(imported.model(), HasSubstr(R"xml(entityType="N.E" deletable="false"/>)xml"));
    EXPECT_EQ(imported.reasonFor("@Org.OData.Capabilities.V1.DeleteRestrictions/MaxLevels"),
              "no property stands for the term");
}

TEST(CsdlAnnotations, NameThingsWhereTheirLabelsTellThemApart) {
    auto const imported = ImportedCsdl::ofSchema(R"xml(<ComplexType Name="T">
        <Property Name="a" Type="Edm.Int32"><Annotation Term="Common.Label" String="Amount]"/></Property>
        <Property Name="b" Type="Edm.Int32"><Annotation Term="Common.Label" String="Twice"/></Property>
        <Property Name="c" Type="Edm.Int32"><Annotation Term="Common.Label" String="Twice"/></Property>
        <Property Name="d" Type="Edm.Int32"><Annotation Term="Common.Label" String="b"/></Property>
        </ComplexType>)xml",
                                                 vocabularies);
    EXPECT_THAT(imported.model(),
                HasSubstr(R"xml(id="property:[N].[T].[a]" name="Amount]" sourceName="a")xml"));
    for (char const* const name : {R"xml(name="b")xml", R"xml(name="c")xml", R"xml(name="d")xml"}) {
        EXPECT_THAT(imported.model(), HasSubstr(name));
    }
}

TEST(CsdlAnnotations, AreToldOfWhenTheyAreLeftOut) {
    auto const imported = ofProperty(
        R"xml(<Annotation Term="Core.Description" Path="q"/>
           <Annotation Term="Core.LongDescription" Qualifier="Phone" String="x"/>
           <Annotation Term="My.Own" String="x"><Annotation Term="My.Inner" String="y"/></Annotation>
           <Annotation Term="Core.Revisions"><Collection><Record/></Collection></Annotation>)xml",
        R"xml(<Action Name="Do"/><Annotations Target="N.Do"><Annotation Term="Core.Computed"/></Annotations>)xml");
    EXPECT_THAT(imported.reasonFor("@Org.OData.Core.V1.Description"), HasSubstr("to be computed"));
    EXPECT_THAT(imported.reasonFor("@Org.OData.Core.V1.LongDescription"), HasSubstr("qualifier"));
    EXPECT_EQ(imported.reasonFor("@My.Own"), "no property stands for the term");
    EXPECT_EQ(imported.reasonFor("@My.Inner"), "it describes an annotation");
    EXPECT_EQ(imported.reasonFor("@Org.OData.Core.V1.Revisions"),
              "no property stands for the term");
    EXPECT_EQ(imported.reasonFor("@Org.OData.Core.V1.Computed"), "what it describes was left out");
    EXPECT_THAT(imported.model(), Not(HasSubstr("isComputed")));
}

TEST(CsdlAnnotations, OfASetCountBeforeThoseOfItsType) {
    auto const imported = ImportedCsdl::ofSchema(
        R"xml(<EntityType Name="E"><Annotation Term="Core.Description" String="type"/>
             <Annotation Term="Core.LongDescription" String="of the type"/></EntityType>
           <EntityContainer Name="C"><EntitySet Name="S" EntityType="N.E">
             <Annotation Term="Core.Description" String="set"/></EntitySet></EntityContainer>)xml",
        vocabularies);
    EXPECT_THAT(imported.model(),
                HasSubstr(R"xml(description="set" screenTip="of the type"/>)xml"));
}

} // namespace
