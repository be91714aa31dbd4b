#include "VexCatalogue.h"

#include "KRLException.h"
#include "VexHostSession.h"
#include "VexLoadedPlugin.h"
#include "VexModel.h"
#include "tests/kit/Complaint.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

std::string const samples = std::string(VEX_SOURCE_DIR) + "/samples/";

constexpr char Small[] = R"(<catalog><model path="/content/m" file="m.xml">
    <package value="P"><property name="screenTip" locale="de">Tipp</property></package>
    <grant role="clerk" view="v"/><grant role="chief" view="w"/></model>
    <user name="ann"><role>clerk</role></user></catalog>)";

TEST(Catalogue, TellsWhatItHolds) {
    auto const catalogue = VexCatalogue::readText(Small, "small", "/folder");
    EXPECT_EQ(catalogue->modelPaths(), std::vector<I18NString>{"/content/m"});
    EXPECT_EQ(catalogue->userNames(), std::vector<I18NString>{"ann"});
    EXPECT_EQ(catalogue->modelFile("/content/m"), "/folder/m.xml");
}

TEST(Catalogue, NamesWhatItHasWhenItIsAskedForSomethingElse) {
    auto const catalogue = VexCatalogue::readText(Small, "small", "/folder");
    EXPECT_THAT(complaintOf([&] { catalogue->modelFile("/content/x"); }),
                AllOf(HasSubstr("/content/x"), HasSubstr("/content/m")));
    EXPECT_THAT(complaintOf([&] { VexCatalogueSecurity(catalogue, "bob"); }),
                AllOf(HasSubstr("bob"), HasSubstr("ann")));
    EXPECT_THAT(complaintOf([] { VexCatalogueSecurity(nullptr, "ann"); }), HasSubstr("catalogue"));
}

TEST(Catalogue, ReadsAModelWithTheViewsOfItsPolicy) {
    auto const byRules = VexCatalogue::readFile(samples + "retail.rules.catalog.xml");
    EXPECT_TRUE(byRules->readModel("/content/retail")->findById("clerks").IsNotNull());
    EXPECT_FALSE(
        VexModel::readFile(byRules->modelFile("/content/retail"))->findById("clerks").IsNotNull());
    auto const byHand = VexCatalogue::readFile(samples + "retail.catalog.xml");
    EXPECT_TRUE(byHand->readModel("/content/retail")->findById("view.clerk").IsNotNull());
    EXPECT_THAT(complaintOf([&] { byHand->readModel("/content/x"); }), HasSubstr("/content/x"));
}

TEST(Catalogue, SaysWhereItCannotBeRead) {
    EXPECT_THAT(complaintOf([] { VexCatalogue::readText("<catalog>\n<x/></catalog>", "bad", ""); }),
                HasSubstr("bad:2:"));
    EXPECT_THAT(complaintOf([] { VexCatalogue::readFile("/nowhere.xml"); }),
                HasSubstr("/nowhere.xml"));
}

TEST(Catalogue, GrantsAUserViewsRolesAndThePackage) {
    VexCatalogueSecurity security(VexCatalogue::readText(Small, "small", ""), "ann");
    EXPECT_EQ(security.GetSecurityInfoSource("/content/x"), nullptr);
    VexSecurityInfoSource* const source = security.GetSecurityInfoSource("/content/m");
    ASSERT_NE(source, nullptr);
    std::vector<I18NString> list;
    source->GetAvailableViews(list);
    EXPECT_EQ(list, std::vector<I18NString>{"v"});
    source->GetRoles(list);
    EXPECT_EQ(list, std::vector<I18NString>{"clerk"});
    I18NString value;
    source->GetPackageValue("/content/m", value, I18NLocale("de"));
    EXPECT_EQ(value, "P");
    EXPECT_EQ(source->GetPackagePropertyValue("/content/m", I18NLocale("de_AT"), "screenTip"),
              "Tipp");
}

TEST(Catalogue, ServesASessionOfThePlugin) {
    auto const catalogue = VexCatalogue::readFile(samples + "retail.catalog.xml");
    I18NString path("/content/retail");
    auto const model = VexModel::readFile(catalogue->modelFile(path));
    VexLoadedPlugin plugin(VEX_PLUGIN_FILE);
    long verdicts[2] = {};
    char const* const users[2] = {"admin", "carl"};
    for (int number = 0; number < 2; ++number) {
        VexCatalogueSecurity security(catalogue, users[number]);
        VexHostSession session(model->store(), model->defaultLocale(), &security);
        VexParams in;
        in.AddParam(VexVariant(0L));
        in.AddParam(VexVariant(&path));
        in.AddParam(VexVariant(model->findById("qi.orderLines.margin")));
        in.AddParam(VexVariant(0L));
        VexParams out;
        ASSERT_TRUE(plugin.act(session, 32000, in, out));
        ASSERT_EQ(out.size(), 2U);
        verdicts[number] = static_cast<long>(out[1]);
        plugin.notify(session, VexNotification::SessionClosed);
    }
    EXPECT_EQ(verdicts[0], 1);
    EXPECT_EQ(verdicts[1], 0);
}

} // namespace
