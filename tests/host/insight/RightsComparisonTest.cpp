#include "host/insight/RightsComparison.h"

#include "KRLException.h"
#include "host/import/xml/ModelLoader.h"
#include "host/store/image/Budget.h"

#include <gtest/gtest.h>

namespace {

std::shared_ptr<vex::Model const> modelOf(std::string const& locales, std::string const& view) {
    return vex::loadModelText("<model defaultLocale=\"en\"><locales>" + locales +
                                  "</locales><namespace id=\"n\" name=\"N\"/><securityViews>" +
                                  view + "</securityViews></model>",
                              "m.xml");
}

vex::Catalogue catalogueOf(std::string const& text) {
    vex::Diagnostics found;
    return *vex::readCatalogueText("<catalog>" + text + "</catalog>", "c.xml", ".", found);
}

using Lines = std::vector<std::string>;

Lines linesOf(std::vector<vex::RightChange> const& changes) {
    Lines lines;
    for (vex::RightChange const& change : changes) {
        lines.push_back((change.isAdded ? "+ " : "- ") + change.text);
    }
    return lines;
}

TEST(RightsComparison, IsChargedToTheCall) {
    auto const model = modelOf("<locale>en</locale>", R"(<securityView id="v"/>)");
    vex::RightsSide const side{*model, nullptr, {}};
    {
        vex::Budget const call({.steps = 3});
        EXPECT_THROW(vex::compareRights(side, side), KRLLimitException);
    }
    vex::Budget const call({.bytes = 40});
    EXPECT_THROW(vex::compareRights(side, side), KRLLimitException);
}

TEST(RightsComparison, TellsOfLanguagesAndViews) {
    auto const before = modelOf("<locale>en</locale>",
                                R"(<securityView id="v" name="Clerks" roleBased="true">
        <member roleId="clerk"/><set kind="included"><item>n</item></set></securityView>)");
    auto const after = modelOf("<locale>en</locale><locale>de</locale>",
                               R"(<securityView id="v" name="Clerks" roleBased="true">
        <member roleId="boss"/><set kind="hidden"><item>n</item></set></securityView>)");
    EXPECT_EQ(linesOf(vex::compareRights({*before, nullptr, {}}, {*after, nullptr, {}})),
              (Lines{"- the view v Clerks is for the role clerk",
                     "- the view v Clerks includes the namespace \"N\" (n)", "+ the language de",
                     "+ the view v Clerks is for the role boss",
                     "+ the view v Clerks hides the namespace \"N\" (n)"}));
    EXPECT_TRUE(vex::compareRights({*before, nullptr, {}}, {*before, nullptr, {}}).empty());
}

TEST(RightsComparison, TellsOfGrantsAndUsers) {
    auto const model = modelOf("<locale>en</locale>", "");
    vex::Catalogue const before = catalogueOf(R"(<model path="/content/m" file="m.xml">
        <grant role="clerk" view="v"/></model><user name="ann"><role>clerk</role></user>)");
    vex::Catalogue const after = catalogueOf(R"(<model path="/content/m" file="m.xml">
        <grant role="boss" view="v"/></model><user name="ann"><role>boss</role></user>
        <user name="ben"><role>boss</role></user>)");
    EXPECT_EQ(linesOf(vex::compareRights({*model, &before, "/content/m"},
                                         {*model, &after, "/content/m"})),
              (Lines{"- the role clerk may use the view v", "- the user ann has the role clerk",
                     "+ the role boss may use the view v", "+ the user ann has the role boss",
                     "+ the user ben", "+ the user ben has the role boss"}));
}

} // namespace
