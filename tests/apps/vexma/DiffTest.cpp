#include "tests/apps/vexma/SampleRun.h"
#include "tests/support/Casts.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;

/// A model in an old and a new state: the new one lets the clerk see less.
class ModelVersions : public testing::Test {
protected:
    ModelVersions() {
        m_folder.Write("old.model.xml", Model(R"(
          <queryItem id="i1" name="Number" usage="identifier"/>
          <queryItem id="i2" name="Total"/>
          <queryItem id="i3" name="Open"/>
          <queryItem name="Note" format="text"/>)",
                                              "<item>i1</item><item>i2</item><item>i3</item>"));
        m_folder.Write("new.model.xml", Model(R"(
          <queryItem id="i1" name="Order Number" usage="attribute"/>
          <queryItem id="i2" name="Total"/>
          <queryItem id="i9" name="Open"/>
          <queryItem id="i4" name="Paid"/>
          <queryItem name="Note" format="html"/>)",
                                              "<item>i1</item><item>i9</item><item>i4</item>"));
        m_folder.Write("m.catalog.xml", casts::catalogue({"v"}, "old.model.xml"));
    }

    static std::string Model(std::string const& items, std::string const& included) {
        return R"(<model defaultLocale="en"><namespace id="n" name="Sales">
          <querySubject id="q" name="Orders">)" +
               items + R"(</querySubject></namespace><securityViews><securityView id="v">
          <set kind="included"><item>n</item><item>q</item>)" +
               included + "</set></securityView></securityViews></model>";
    }

    ToolResult OfClerk(std::vector<std::string> more) const {
        more.insert(more.begin(), {"diff", "--catalog", "m.catalog.xml", "--model", "/content/m",
                                   "--user", "carl", "--other-file", "new.model.xml"});
        return m_folder.Run(more);
    }

    ToolFolder m_folder;
};

TEST_F(ModelVersions, TellWhatTheClerkLosesInTheNewModel) {
    ToolResult const result = OfClerk({});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_EQ(result.out, R"(- the view v includes the queryItem "Total" (i2)
- the view v includes the queryItem "Open" (i3)
+ the view v includes the queryItem "Open" (i9)
+ the view v includes the queryItem "Paid" (i4)
  model
  └── namespace "Sales" (n)
      └── querySubject "Orders" (q)
~         ├── queryItem "Order Number" (i1)  name "Number" -> "Order Number"; usage "identifier" -> "attribute"
-         ├── queryItem "Total" (i2)
~         ├── queryItem "Open" (i9)  ID "i3" -> "i9"
+         └── queryItem "Paid" (i4)
1 appear, 1 disappear, 2 change, 1 of them renamed
)");
}

TEST_F(ModelVersions, AreComparedAsFilesById) {
    json const told =
        json::parse(m_folder.Run({"diff", "old.model.xml", "new.model.xml", "--json"}).out);
    EXPECT_EQ(told.at("appear"), 1);
    EXPECT_EQ(told.at("disappear"), 0);
    json const& renamed = told.at("objects").at(0);
    EXPECT_EQ(renamed.at("id"), "i1");
    EXPECT_EQ(renamed.at("renamed"), true);
    EXPECT_EQ(renamed.at("properties").at("name"),
              json({{"before", "Number"}, {"after", "Order Number"}}));
}

TEST_F(ModelVersions, AreComparedByReferenceWhereThereIsNoId) {
    json const told =
        json::parse(m_folder.Run({"diff", "old.model.xml", "new.model.xml", "--json"}).out);
    bool found = false;
    for (json const& object : told.at("objects")) {
        if (object.at("reference") == "[Sales].[Orders].[Note]") {
            found = true;
            EXPECT_EQ(object.at("change"), "changes");
            EXPECT_EQ(object.at("properties").at("format"),
                      json({{"before", "text"}, {"after", "html"}}));
        }
    }
    EXPECT_TRUE(found);
}

TEST_F(ModelVersions, EndWithAStatusThatBuildsCanAskFor) {
    EXPECT_EQ(OfClerk({}).status, 0);
    EXPECT_EQ(OfClerk({"--exit-code"}).status, 1);
    EXPECT_EQ(m_folder.Run({"diff", "old.model.xml", "old.model.xml", "--exit-code"}).status, 0);
}

TEST_F(ModelVersions, AreComparedForEveryUserAtOnce) {
    m_folder.Write("new.catalog.xml", R"(<catalog>
        <model path="/content/m" file="new.model.xml"><grant role="clerk" view="v"/></model>
        <user name="carl"><role>clerk</role></user><user name="bea"><role>clerk</role></user>
        <user name="cid"/></catalog>)");
    m_folder.Write("m.catalog.xml", R"(<catalog>
        <model path="/content/m" file="old.model.xml"><grant role="clerk" view="v"/></model>
        <user name="carl"><role>clerk</role></user><user name="bea"><role>clerk</role></user>
        <user name="cid"/><user name="dan"/></catalog>)");
    std::vector<std::string> const command{
        "diff",       "--catalog",       "m.catalog.xml",   "--model",
        "/content/m", "--other-catalog", "new.catalog.xml", "--all-users"};
    ToolResult const result = m_folder.Run(command);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("- the user dan\n"));
    EXPECT_THAT(result.out, HasSubstr("+ the view v includes the queryItem \"Paid\" (i4)\ncarl, "
                                      "bea:\n  model\n"));
    EXPECT_THAT(result.out, HasSubstr("1 appear, 1 disappear, 2 change, 1 of them renamed\ncid: "
                                      "every request is refused on both sides: "));
    std::vector<std::string> asJson = command;
    asJson.insert(asJson.end(), {"--json", "--exit-code"});
    ToolResult const told = m_folder.Run(asJson);
    EXPECT_EQ(told.status, 1);
    nlohmann::json const report = nlohmann::json::parse(told.out);
    EXPECT_EQ(report.at("users")[0].at("user"), "carl");
    EXPECT_EQ(report.at("users")[0].at("alsoFor"), nlohmann::json::parse(R"(["bea"])"));
    EXPECT_EQ(report.at("users")[0].at("appear"), 1);
    EXPECT_TRUE(report.at("users")[1].contains("refusedAfter"));
    EXPECT_EQ(report.at("rights").size(), 5U);
}

TEST_F(ModelVersions, ShowNoDifferenceToThemselves) {
    EXPECT_EQ(m_folder.Run({"diff", "old.model.xml", "old.model.xml"}).out,
              "0 appear, 0 disappear, 0 change, 0 of them renamed\n");
}

TEST(Diff, ComparesTwoUsers) {
    json const told =
        json::parse(runOnSample("diff", "admin", {"--other-user", "ann", "--json"}).out);
    EXPECT_EQ(told.at("appear"), 0);
    EXPECT_EQ(told.at("disappear"), 26);
    EXPECT_EQ(told.at("objects").at(0).at("id"), "qi.products.purchasePrice");
    EXPECT_EQ(told.at("objects").at(0).at("change"), "disappears");
}

TEST(Diff, ComparesTwoViews) {
    ToolResult const result =
        runOnSample("diff", "admin", {"--view", "view.analyst", "--other-view", "view.clerk"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("calculation \"Days of Supply\" (ca.supply)\n"));
}

TEST(Diff, ComparesTwoLanguages) {
    std::string const out = runOnSample("diff", "admin", {"--other-locale", "de"}).out;
    EXPECT_THAT(out, HasSubstr("queryItem \"Wochentag\" (qi.calendar.weekday)  name"));
    EXPECT_THAT(out, HasSubstr("name \"Weekday\" -> \"Wochentag\""));
    EXPECT_THAT(out, HasSubstr("queryItem \"Campaign Budget\" (qi.promotions.budget)\n"));
}

TEST(Diff, ComparesEveryLanguageUnlessOneIsAskedFor) {
    ToolFolder const folder;
    auto const model = [](std::string const& german) {
        return R"(<model defaultLocale="en"><locales><locale>en</locale><locale>de</locale>
          </locales><namespace id="n" name="N"><filter id="x">
          <property name="name" locale="en">Open</property>)" +
               german + "</filter></namespace></model>";
    };
    folder.Write("old.xml", model(R"(<property name="name" locale="de">Offen</property>)"));
    folder.Write("new.xml", model(R"(<property name="name" locale="de">Frei</property>)"));
    folder.Write("none.xml", model(R"(<property name="name" locale="de"></property>)"));
    EXPECT_THAT(folder.Run({"diff", "old.xml", "new.xml"}).out,
                HasSubstr("filter \"Open\" (x)  name (de) \"Offen\" -> \"Frei\"\n0 appear, 0 "
                          "disappear, 1 change, 1 of them renamed\n"));
    EXPECT_THAT(folder.Run({"diff", "old.xml", "none.xml"}).out,
                HasSubstr("filter \"Open\" (x)  shown (de) \"yes\" -> \"no\"\n"));
    EXPECT_EQ(folder.Run({"diff", "old.xml", "new.xml", "--locale", "en"}).out,
              "0 appear, 0 disappear, 0 change, 0 of them renamed\n");
    EXPECT_EQ(folder.Run({"diff", "old.xml", "new.xml", "--exit-code"}).status, 1);
}

TEST(Diff, TellsThatShortcutsStillShowWhatIsGoneFromItsPlace) {
    ToolFolder folder;
    folder.Write("m.model.xml", casts::shop(casts::views(casts::view("v1", {"n", "q", "i"}) +
                                                         casts::view("v2", {"n", "q"}))));
    folder.Write("m.catalog.xml", casts::catalogue({"v1", "v2"}));
    ToolResult const result =
        folder.Run({"diff", "--catalog", "m.catalog.xml", "--model", "/content/m", "--user", "carl",
                    "--view", "v1", "--other-view", "v2"});
    EXPECT_THAT(result.out,
                HasSubstr("queryItem \"Quantity\" (i)  (still shown behind a shortcut)\n"
                          "0 appear, 1 disappear"));
}

TEST(Diff, IsRefusedWhenOneSideIs) {
    ToolResult const result = runOnSample("diff", "ann", {"--other-user", "nora", "--verbose"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("1170699671"));
}

TEST(Diff, RefusesSidesThatCannotBe) {
    EXPECT_EQ(ToolFolder().Run({"diff"}).status, 2);
    EXPECT_EQ(ToolFolder().Run({"diff", "-", "-"}).status, 2);
    EXPECT_EQ(ToolFolder().Run({"diff", "small.model.xml", "--other-user", "ann"}).status, 2);
    EXPECT_EQ(ToolFolder().Run({"diff", "small.model.xml", "--other-file", "x"}).status, 2);
    EXPECT_EQ(runOnSample("diff", "ann", {"--other-user", "nobody"}).status, 3);
    EXPECT_EQ(runOnSample("diff", "ann", {"--all-users"}).status, 2);
}

} // namespace
