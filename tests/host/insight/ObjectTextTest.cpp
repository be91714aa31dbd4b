#include "host/insight/ObjectText.h"

#include "KRLException.h"
#include "host/import/xml/ModelLoader.h"
#include "host/store/image/Budget.h"

#include <gtest/gtest.h>

namespace {

std::shared_ptr<vex::Model const> const& textsModel() {
    static auto const loaded = vex::loadModelText(R"(<model defaultLocale="en">
      <locales><locale>en</locale><locale>de</locale></locales>
      <namespace id="n" name="Sales"><namespace id="inner" name="Inner">
        <folder id="f"><property name="name" locale="en">Facts</property>
          <property name="name" locale="de">Fakten</property>
          <querySubject id="q" name="Orders"/></folder></namespace>
        <filter name="Open"/>
        <shortcut id="s" name="Again"><property name="refobj">[Sales].[Open]</property>
          <property name="refobj">[Inner].[Orders]</property></shortcut>
        <shortcut id="lost" name="Lost"/></namespace>
      <dataSource id="d"/></model>)",
                                                  "m.model.xml");
    return loaded;
}

VEX_HANDLE object(char const* id) {
    return textsModel()->findById(id);
}

VEX_HANDLE filterOpen() {
    return textsModel()->GetObjectByReference("[Sales].[Open]", 0);
}

TEST(ObjectText, DescribesAnObjectByClassNameAndId) {
    I18NLocale const& locale = textsModel()->defaultLocale();
    EXPECT_EQ(vex::describeObject(object("f"), locale), "folder \"Facts\" (f)");
    EXPECT_EQ(vex::describeObject(filterOpen(), locale), "filter \"Open\"");
    EXPECT_EQ(vex::describeObject(object("d"), locale), "dataSource (d)");
    EXPECT_EQ(vex::describeObject(textsModel()->GetRootObject(), locale), "model");
}

TEST(ObjectText, HasTheNameThatALanguageFinds) {
    EXPECT_EQ(vex::describeObject(object("f"), I18NLocale("de")), "folder \"Fakten\" (f)");
    EXPECT_EQ(vex::nameIn(I18NLocale("de"), object("q")), "Orders");
}

TEST(ObjectText, LabelsAnObjectWithAllThatItIsKnownBy) {
    vex::ObjectLabel const label =
        vex::labelOf(*textsModel(), object("q"), textsModel()->defaultLocale());
    EXPECT_EQ(label.id, "q");
    EXPECT_EQ(label.reference, "[Inner].[Orders]");
    EXPECT_EQ(label.className, "querySubject");
    EXPECT_EQ(label.name, "Orders");
    EXPECT_EQ(label.key(), "q");
    EXPECT_EQ(vex::describeObject(label), "querySubject \"Orders\" (q)");
}

TEST(ObjectText, LabelsAnObjectWithoutAnIdByItsReference) {
    vex::ObjectLabel const label =
        vex::labelOf(*textsModel(), filterOpen(), textsModel()->defaultLocale());
    EXPECT_EQ(label.id, "");
    EXPECT_EQ(label.key(), "[Sales].[Open]");
    EXPECT_EQ(vex::keyOf(*textsModel(), filterOpen()), "[Sales].[Open]");
    EXPECT_EQ(vex::keyOf(*textsModel(), object("q")), "q");
}

TEST(ObjectText, LabelsAnObjectThatHasNothingOfThem) {
    vex::ObjectLabel const label =
        vex::labelOf(*textsModel(), textsModel()->GetRootObject(), textsModel()->defaultLocale());
    EXPECT_EQ(label.id + label.reference + label.name, "");
    EXPECT_EQ(label.key(), "");
}

TEST(ObjectText, JoinsIdAndNameAndLeavesOutWhatIsMissing) {
    I18NLocale const& locale = textsModel()->defaultLocale();
    EXPECT_EQ(vex::idAndName(object("q"), locale), "q Orders");
    EXPECT_EQ(vex::idAndName(object("d"), locale), "d");
    EXPECT_EQ(vex::idAndName(filterOpen(), locale), "Open");
}

TEST(ObjectText, FindsTheNamespacesAroundAnObject) {
    EXPECT_EQ(vex::namespaceAround(object("q")), object("inner"));
    EXPECT_EQ(vex::namespaceAround(object("inner")), object("n"));
    EXPECT_FALSE(vex::namespaceAround(object("n")).IsNotNull());
    EXPECT_EQ(vex::outermostNamespaceOf(object("q")), object("n"));
    EXPECT_EQ(vex::outermostNamespaceOf(object("n")), object("n"));
    EXPECT_FALSE(vex::outermostNamespaceOf(object("d")).IsNotNull());
}

TEST(ObjectText, ChargesLabelsToTheCall) {
    vex::Budget const call({.bytes = 300});
    std::vector<VEX_HANDLE> const objects(20, object("q"));
    EXPECT_THROW(vex::labelsOf(*textsModel(), objects, textsModel()->defaultLocale()),
                 KRLLimitException);
}

TEST(ObjectText, FindsTheLastTargetOfAShortcut) {
    EXPECT_EQ(vex::targetOf(*textsModel(), object("s")), object("q"));
    EXPECT_FALSE(vex::targetOf(*textsModel(), object("lost")).IsNotNull());
}

} // namespace
