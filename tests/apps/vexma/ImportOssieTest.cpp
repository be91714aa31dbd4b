#include "tests/apps/vexma/ToolRun.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string const bakery = std::string(VEX_SOURCE_DIR) + "/samples/import/bakery.yaml";

// By hand: sale_id is the key of Sales, product_id and name are those of Products; the
// relationship joins product_id of both.
constexpr char const* bakeryModel = R"x(<?xml version="1.0" encoding="UTF-8"?>
<model id="model" defaultLocale="en_US">
  <locales>
    <locale>en_US</locale>
  </locales>
  <namespace id="model:[Bakery]" name="Bakery" description="What is baked and sold&#10;Amounts are in euros.&#10;Synonyms: bread shop">
    <querySubject id="dataset:[Bakery].[Sales]" name="Sales" description="One row for each loaf that was sold" source="shop.public.sales">
      <queryItem id="field:[Bakery].[Sales].[Sale]" name="Sale" datatype="int64" expression="sale_id" usage="identifier"/>
      <queryItem id="field:[Bakery].[Sales].[Product]" name="Product" datatype="int64" expression="product_id" usage="identifier"/>
      <queryItem id="field:[Bakery].[Sales].[Sold on]" name="Sold on" datatype="date" isTime="true" expression="sold_on" usage="attribute"/>
      <queryItem id="field:[Bakery].[Sales].[Amount [EUR]]]" name="Amount [EUR]" datatype="decimal" label="money" expression="cast(amount as decimal(10, 2))" expression.SNOWFLAKE="amount::number(10, 2)" description="Without tax&#10;What the customer paid" usage="fact"/>
    </querySubject>
    <querySubject id="dataset:[Bakery].[Products]" name="Products" source="shop.public.products">
      <queryItem id="field:[Bakery].[Products].[Number]" name="Number" datatype="int64" expression="product_id" usage="identifier"/>
      <queryItem id="field:[Bakery].[Products].[Name]" name="Name" datatype="string" expression="name" description="Synonyms: bread, loaf&#10;Examples: Which loaf sells best?" usage="identifier"/>
    </querySubject>
    <relationship id="relationship:[Bakery].[what was sold]" name="what was sold" left="[Bakery].[Sales]" leftCardinality="0..n" right="[Bakery].[Products]" rightCardinality="0..1" expression="[Bakery].[Sales].[Product] = [Bakery].[Products].[Number]"/>
    <calculation id="metric:[Bakery].[Revenue]" name="Revenue" datatype="decimal" usage="fact" expression="sum(Sales.amount)" extension.DBT="{&quot;tags&quot;: [&quot;daily&quot;]}"/>
  </namespace>
)x";

TEST(ImportOssie, MakesTheModelThatWasWrittenOutByHand) {
    ToolFolder const folder;
    ToolResult const imported = folder.Run({"import", "ossie", bakery, "-o", "made"});
    ASSERT_EQ(imported.status, 0) << imported.error;
    EXPECT_THAT(folder.RunShell("cat made/bakery.model.xml").out, testing::StartsWith(bakeryModel));
    ToolResult const checked = folder.Run({"validate", "made/bakery.catalog.xml"});
    EXPECT_EQ(checked.status, 0) << checked.out;
    EXPECT_THAT(checked.out + checked.error, IsEmpty());
}

TEST(ImportOssie, IsAcceptedByTheCheckAndAnswersSomebody) {
    struct Case {
        char const* name;
        char const* shown;
    };
    for (Case const& each : {Case{"tpcds_semantic_model", "├── calculation total_sales\n"},
                             Case{"flights", "│   ├── queryItem carrier_code\n"}}) {
        ToolFolder const folder;
        std::string const name = each.name;
        std::string const source =
            std::string(VEX_SOURCE_DIR) + "/tests/host/import/ossie/models/" + name + ".yaml";
        ToolResult const imported = folder.Run({"import", "ossie", source, "-o", "made"});
        ASSERT_EQ(imported.status, 0) << imported.error;
        std::string const catalogue = "made/" + name + ".catalog.xml";
        ToolResult const checked = folder.Run({"validate", catalogue});
        EXPECT_EQ(checked.status, 0) << checked.out;
        EXPECT_THAT(checked.out + checked.error, IsEmpty());
        ToolResult const tree = folder.Run(
            {"tree", "--catalog", catalogue, "--model", "/content/" + name, "--user", "owner"});
        EXPECT_EQ(tree.status, 0) << tree.error;
        EXPECT_THAT(tree.out, HasSubstr(each.shown));
    }
}

TEST(ImportOssie, TwiceGivesTheSameIdsSoThatDiffSaysWhatChanged) {
    ToolFolder const folder;
    folder.Write("before/m.yaml", "version: 0.2.0\nsemantic_model:\n- name: M\n  datasets:\n"
                                  "  - {name: D, source: d, fields: [{name: A}, {name: B}]}\n");
    folder.Write("after/m.yaml", "version: 0.2.0\nsemantic_model:\n- name: M\n  datasets:\n"
                                 "  - {name: D, source: d, fields: [{name: C}, {name: B}]}\n");
    folder.Run({"import", "ossie", "before/m.yaml", "-o", "old"});
    folder.Run({"import", "ossie", "after/m.yaml", "-o", "new"});
    folder.Run({"import", "ossie", "before/m.yaml", "-o", "again"});
    EXPECT_EQ(folder.RunShell("cmp old/m.model.xml again/m.model.xml").status, 0);
    EXPECT_THAT(folder.Run({"diff", "old/m.model.xml", "new/m.model.xml"}).out,
                HasSubstr("1 appear, 1 disappear"));
}

TEST(ImportOssie, WritesNothingWhenTheSourceCannotBeUsed) {
    ToolFolder const folder;
    folder.Write("bad.yaml", "version: 0.2.0\nsemantic_model:\n- name: M\n  name: N\n");
    ToolResult const result = folder.Run({"import", "ossie", "bad.yaml", "-o", "made"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("bad.yaml:4:9: error: the key \"name\" stands twice"));
    EXPECT_NE(folder.RunShell("test -e made").status, 0);
}

} // namespace
