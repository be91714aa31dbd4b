#include "host/service/MetadataRequest.h"

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vex::MetadataRequest;

MetadataRequest read(char const* text) {
    return MetadataRequest::read(KRLIDOM_Reader::parse(text, "request").document());
}

std::string written(MetadataRequest const& request) {
    return KRLIDOM_Writer::toUtf8(request.toDocument().document());
}

MetadataRequest readBack(MetadataRequest const& request) {
    return MetadataRequest::read(request.toDocument().document());
}

TEST(MetadataRequest, IsAnEmptyDocumentWhenItAsksForNothing) {
    EXPECT_EQ(written({}), "<Metadata/>");
}

TEST(MetadataRequest, WritesItsOptions) {
    EXPECT_EQ(written({.start = "[Sales]", .depth = 2, .view = "v1"}),
              R"(<Metadata Depth="2" securityView="v1" start_at="[Sales]"/>)");
    EXPECT_EQ(written({.reference = "[Sales].[Orders]", .depth = -1}),
              R"(<Metadata Depth="-1" start_atRef="[Sales].[Orders]"/>)");
    EXPECT_EQ(written({.otherOptions = {{"authoringLocale", "de"}}}),
              R"(<Metadata authoringLocale="de"/>)");
}

TEST(MetadataRequest, StartsAtTheReferenceElseAtThePathThatWins) {
    MetadataRequest request{.start = "[A]"};
    EXPECT_EQ(request.startText(), "[A]");
    request.otherOptions["start_atPath"] = "";
    EXPECT_EQ(request.startText(), "[A]");
    request.otherOptions["start_atPath"] = "[B]";
    EXPECT_EQ(request.startText(), "[B]");
    request.reference = "[C].[D]";
    EXPECT_EQ(request.startText(), "[C].[D]");
}

TEST(MetadataRequest, TakesAnotherStartForTheOneThatCounts) {
    MetadataRequest request{.start = "[A]", .otherOptions = {{"start_atPath", "[B]"}}};
    request.setStartText("[C]");
    EXPECT_EQ(request.startText(), "[C]");
    request.reference = "[A].[B]";
    request.setStartText("[D].[E]");
    EXPECT_EQ(request.reference, "[D].[E]");
    EXPECT_EQ(request.start, "[C]");
}

TEST(MetadataRequest, WritesAFunctionRequest) {
    EXPECT_EQ(written({.functions = true}), R"(<Metadata><Functions function="1"/></Metadata>)");
}

TEST(MetadataRequest, WritesItsListsInTheirOrder) {
    EXPECT_EQ(written({.globals = {"listSeparator", "defaultLocale"},
                       .properties = {"*/@name", "queryItem/@usage"},
                       .collections = {"*/querySubject", "./folder"},
                       .constraints = {{"./@usage", "fact"}},
                       .oddConstraints = {"usage"}}),
              R"(<Metadata><Property name="/@listSeparator"/><Property name="/@defaultLocale"/>)"
              R"(<Property name="*/@name"/><Property name="queryItem/@usage"/>)"
              R"(<Property name="*/querySubject"/><Property name="./folder"/>)"
              R"(<Constraint name="./@usage=[fact]"/><Constraint name="usage"/></Metadata>)");
}

TEST(MetadataRequest, AsksEveryClassForWhatNamesNone) {
    MetadataRequest request;
    request.addProperty("name");
    request.addProperty("queryItem/@usage");
    request.addCollection("folder");
    request.addCollection("querySubject/queryItem");
    EXPECT_THAT(request.properties, ElementsAre("*/@name", "queryItem/@usage"));
    EXPECT_THAT(request.collections, ElementsAre("*/folder", "querySubject/queryItem"));
}

TEST(MetadataRequest, BindsTheStartObjectByAConstraintThatNamesNoClass) {
    MetadataRequest request;
    request.addConstraint("usage", "fact");
    request.addConstraint("queryItem/@name", "Price");
    EXPECT_EQ(request.constraints, (std::vector<MetadataRequest::Constraint>{
                                       {"./@usage", "fact"}, {"queryItem/@name", "Price"}}));
}

TEST(MetadataRequest, IsTheSameWhenItsDocumentIsRead) {
    MetadataRequest const whole{.start = "[Sales]",
                                .reference = "[Sales].[Orders]",
                                .depth = 3,
                                .view = "v1",
                                .functions = true,
                                .globals = {"effectiveLocale"},
                                .properties = {"*/@name", "./@screenTip"},
                                .collections = {"*/*", "namespace/folder"},
                                .constraints = {{"*/@usage", "fact"}, {"./@name", ""}},
                                .otherOptions = {{"start_atPath", "[Plans]"}, {"xml:lang", ""}},
                                .oddConstraints = {"no sign", "=", "a=[no end"}};
    EXPECT_EQ(readBack(whole), whole);
    EXPECT_EQ(readBack({}), MetadataRequest());
}

TEST(MetadataRequest, IsReadWhereverItsElementsStand) {
    MetadataRequest const request =
        read(R"(<any><Property a="*/@name" b="*/folder"/><other><Metadata Depth="2">
                  <Constraint x="./@usage=[fact]"/></Metadata></other></any>)");
    EXPECT_EQ(request.depth, 2);
    EXPECT_THAT(request.properties, ElementsAre("*/@name"));
    EXPECT_THAT(request.collections, ElementsAre("*/folder"));
    EXPECT_EQ(request.constraints.size(), 1U);
}

TEST(MetadataRequest, TakesTheFirstOfTwoValues) {
    MetadataRequest const request = read(
        R"(<any><Metadata Depth="2" start_at=""/><Metadata Depth="3" start_at="[Sales]"/></any>)");
    EXPECT_EQ(request.depth, 2);
    EXPECT_EQ(request.start, "");
}

TEST(MetadataRequest, ReadsADepthAsFarAsItIsANumber) {
    EXPECT_EQ(read(R"(<Metadata Depth="2 levels"/>)").depth, 2);
    EXPECT_EQ(read(R"(<Metadata Depth="all"/>)").depth, 0);
}

TEST(MetadataRequest, IsAboutThePackageWhenAnElementOrAnOptionSaysSo) {
    EXPECT_TRUE(read(R"(<Metadata><Functions any="x"/></Metadata>)").functions);
    EXPECT_TRUE(read(R"(<Metadata function="no"/>)").functions);
    EXPECT_FALSE(read(R"(<Metadata function=""/>)").functions);
    EXPECT_FALSE(read("<Metadata><Functions/></Metadata>").functions);
}

TEST(MetadataRequest, ReadsAConstraintUpToTheFirstBracket) {
    MetadataRequest const request = read(
        R"(<Metadata><Constraint a="./@b=[c]d]"/><Constraint a="./@b=(=]"/><Constraint a="./@b=]"/>
           </Metadata>)");
    EXPECT_EQ(request.constraints,
              (std::vector<MetadataRequest::Constraint>{{"./@b", "c"}, {"./@b", "="}}));
    EXPECT_THAT(request.oddConstraints, ElementsAre("./@b=]"));
}

TEST(MetadataRequest, KeepsTheOptionsThatItHasNoPlaceFor) {
    MetadataRequest const request =
        read(R"(<Metadata start_atPath="[Sales]" xml:lang="de" Depth="1"/>)");
    EXPECT_EQ(request.start, "");
    EXPECT_EQ(request.otherOptions,
              (std::map<I18NString, I18NString>{{"start_atPath", "[Sales]"}, {"xml:lang", "de"}}));
}

TEST(MetadataRequest, AsksForNothingWithoutADocument) {
    EXPECT_EQ(MetadataRequest::read({}), MetadataRequest());
    EXPECT_THAT(read("<other a='b'/>").otherOptions, IsEmpty());
}

} // namespace
