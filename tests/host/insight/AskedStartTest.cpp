#include "host/insight/AskedStart.h"

#include "host/import/xml/ModelLoader.h"

#include <gtest/gtest.h>

namespace {

using vex::AskedStart;
using vex::MetadataRequest;

std::shared_ptr<vex::Model const> const& threeLocales() {
    static auto const loaded = vex::loadModelText(
        R"(<model defaultLocale="en"><locales><locale>de</locale></locales>
             <namespace id="n">
               <property name="name" locale="en">Sales</property>
               <property name="name" locale="de">Vertrieb</property>
               <property name="name" locale="fr">Ventes</property>
             </namespace></model>)",
        "m.model.xml");
    return loaded;
}

TEST(AskedStart, IsTheTextThatPluginsTake) {
    EXPECT_EQ(AskedStart::of({.start = "[A].[B]"})->lastName, "B");
    EXPECT_FALSE(AskedStart::of({.start = "[A].[B]"})->isReference);
    MetadataRequest request{.start = "[A]", .otherOptions = {{"start_atPath", "[A].[C]"}}};
    EXPECT_EQ(AskedStart::of(request)->text, "[A].[C]");
    request.reference = "[A].[x]]y]";
    EXPECT_EQ(AskedStart::of(request)->lastName, "x]y");
    EXPECT_TRUE(AskedStart::of(request)->isReference);
}

TEST(AskedStart, IsNoneWhereNothingIsNamed) {
    EXPECT_FALSE(AskedStart::of({}));
    EXPECT_FALSE(AskedStart::of({.start = "[A"}));
    EXPECT_FALSE(AskedStart::of({.start = "[A]", .functions = true}));
}

TEST(StartObserver, KeepsTheFirstObjectAndNoMember) {
    vex::StartObserver observer;
    EXPECT_FALSE(observer.start().IsNotNull());
    VexTreeReport report;
    report.object = threeLocales()->findById("n");
    observer.report(report);
    report.object = threeLocales()->GetRootObject();
    report.container = 0;
    observer.report(report);
    EXPECT_EQ(observer.start(), threeLocales()->findById("n"));
}

TEST(BornName, CountsInTheLanguageAskedForTheDefaultOneAndThoseOfTheModel) {
    VEX_HANDLE const space = threeLocales()->findById("n");
    EXPECT_TRUE(vex::bearsName(*threeLocales(), I18NLocale("en"), space, "Sales"));
    EXPECT_TRUE(vex::bearsName(*threeLocales(), I18NLocale("fr"), space, "Sales"));
    EXPECT_TRUE(vex::bearsName(*threeLocales(), I18NLocale("fr"), space, "Ventes"));
    EXPECT_TRUE(vex::bearsName(*threeLocales(), I18NLocale("en"), space, "Vertrieb"));
    EXPECT_FALSE(vex::bearsName(*threeLocales(), I18NLocale("en"), space, "Ventes"));
    EXPECT_FALSE(vex::bearsName(*threeLocales(), I18NLocale("en"), space, "sales"));
}

} // namespace
