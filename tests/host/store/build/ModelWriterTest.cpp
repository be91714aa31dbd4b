#include "tests/host/store/build/WrittenModel.h"
#include "tests/host/store/image/ModelProbe.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

using Probe = ModelProbe;

TEST(ModelWriter, MakesAModelOfOneObject) {
    WrittenModel written;
    auto const model = written.finish();
    EXPECT_EQ(model->elementCount(), 1U);
    EXPECT_EQ(Probe::name(model->GetRootObject()), "model");
    EXPECT_FALSE(VexObject(model->GetRootObject()).GetParent().IsNotNull());
    EXPECT_EQ(model->defaultLocale().getName(), "en_US");
    EXPECT_TRUE(model->locales().empty());
}

TEST(ModelWriter, NestsObjectsAsTheyAreOpenedAndClosed) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.openObject(u"namespace");
    writer.setId(u"n");
    writer.openObject(u"querySubject");
    writer.setId(u"q1");
    writer.closeObject();
    writer.openObject(u"querySubject");
    writer.setId(u"q2");
    writer.closeObject();
    writer.closeObject();
    auto const model = written.finish();
    EXPECT_EQ(model->elementCount(), 4U);
    VEX_HANDLE const outer = model->findById("n");
    EXPECT_EQ(Probe::name(outer), "namespace");
    EXPECT_THAT(Probe::ids(Probe::children(outer)), ElementsAre("q1", "q2"));
    EXPECT_EQ(VexObject(model->findById("q2")).GetParent(), outer);
    EXPECT_THAT(Probe::names(Probe::properties(outer)), ElementsAre("querySubject"));
}

TEST(ModelWriter, GivesAnObjectItsIdRoleClassAndText) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.openObject(u"item");
    writer.setText(u" q1 ");
    writer.setClass(u"entry");
    writer.setRole(u"first");
    writer.setId(u"i");
    writer.closeObject();
    auto const model = written.finish();
    VexObject const item(model->findById("i"));
    I18NString role;
    I18NString cls;
    EXPECT_TRUE(item.GetRole(role));
    EXPECT_TRUE(item.GetClass(cls));
    EXPECT_EQ(role, "first");
    EXPECT_EQ(cls, "entry");
    EXPECT_EQ(Probe::text(model->findById("i")), " q1 ");
    EXPECT_EQ(Probe::value(model->findById("i"), "ID"), "i");
}

TEST(ModelWriter, TakesTheLastOfSeveralRolesClassesAndTexts) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.setRole(u"first");
    writer.setRole(u"last");
    writer.setClass(u"first");
    writer.setClass(u"");
    writer.setText(u"first");
    writer.setText(u"last");
    auto const model = written.finish();
    I18NString text;
    EXPECT_TRUE(VexObject(model->GetRootObject()).GetRole(text));
    EXPECT_EQ(text, "last");
    EXPECT_FALSE(VexObject(model->GetRootObject()).GetClass(text));
    EXPECT_EQ(Probe::text(model->GetRootObject()), "last");
}

TEST(ModelWriter, TakesTheEmptyTextForNoValue) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.setId(u"");
    writer.setText(u"");
    writer.addProperty(u"p", u"");
    auto const model = written.finish();
    I18NString id;
    EXPECT_FALSE(VexObject(model->GetRootObject()).GetId(id));
    EXPECT_EQ(Probe::text(model->GetRootObject()), "(empty)");
    EXPECT_EQ(Probe::value(model->GetRootObject(), "p"), "(empty)");
}

TEST(ModelWriter, KeepsPropertiesInTheOrderInWhichTheyBegin) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.addProperty(u"name", u"Sales");
    writer.openObject(u"folder");
    writer.closeObject();
    writer.addProperty(u"screenTip", u"Tip");
    writer.addProperty(u"tag", u"1");
    writer.addProperty(u"tag", u"2");
    auto const model = written.finish();
    VEX_HANDLE const root = model->GetRootObject();
    EXPECT_THAT(Probe::names(Probe::properties(root)),
                ElementsAre("name", "screenTip", "tag", "tag", "folder"));
    EXPECT_THAT(Probe::values(Probe::properties(root)),
                ElementsAre("Sales", "Tip", "1", "2", "(empty)"));
}

TEST(ModelWriter, LocalisesAProperty) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.setDefaultLocale(u"de");
    vex::ModelWriter::Name const name = writer.name(u"name");
    writer.addProperty({name, writer.locale(u"en"), {}}, u"Orders");
    writer.addProperty({name, writer.locale(u"de-AT"), {}}, u"Bestellungen");
    writer.addProperty({name, writer.locale(u"de"), {}}, u"Auftr\u00e4ge");
    auto const model = written.finish();
    VEX_HANDLE const root = model->GetRootObject();
    EXPECT_EQ(Probe::value(root, "name", "de_AT"), "Bestellungen");
    EXPECT_EQ(Probe::value(root, "name", "de_CH"), "Auftr\u00e4ge");
    EXPECT_EQ(Probe::value(root, "name", "en_GB"), "Orders");
    EXPECT_EQ(Probe::value(root, "name", "fr"), "(none)");
    EXPECT_EQ(Probe::value(root, "name"), "Auftr\u00e4ge");
    I18NLocale const* const locale = VexObject(Probe::property(root, "name", "de_AT")).GetLocale();
    ASSERT_NE(locale, nullptr);
    EXPECT_EQ(locale->getName(), "de_AT");
}

TEST(ModelWriter, GivesAPropertyItsRole) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.addProperty({writer.name(u"p"), {}, u"identifier"}, u"1");
    auto const model = written.finish();
    VEX_HANDLE const found =
        VexObject(model->GetRootObject()).GetPropertyByRole("identifier", nullptr);
    EXPECT_EQ(Probe::name(found), "p");
    EXPECT_EQ(Probe::text(found), "1");
}

TEST(ModelWriter, GivesPropertiesPropertiesOfTheirOwn) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.openObject(u"filter");
    writer.setId(u"f");
    writer.openProperty({writer.name(u"range")});
    writer.addProperty(u"from", u"1");
    writer.openProperty({writer.name(u"to"), writer.locale(u"de"), u"end"});
    writer.addProperty(u"inclusive", u"yes");
    writer.closeProperty(u"9");
    writer.closeProperty(u"1 to 9");
    writer.openProperty({writer.name(u"plain")});
    writer.closeProperty(u"value");
    writer.closeObject();
    auto const model = written.finish();
    VEX_HANDLE const filter = model->findById("f");
    EXPECT_THAT(Probe::values(Probe::properties(filter)), ElementsAre("1 to 9", "value"));
    VEX_HANDLE const range = Probe::property(filter, "range");
    EXPECT_THAT(Probe::names(Probe::properties(range)), ElementsAre("from", "to"));
    VEX_HANDLE const to = Probe::property(range, "to", "de");
    EXPECT_EQ(Probe::text(to), "9");
    EXPECT_EQ(Probe::value(to, "inclusive"), "yes");
    EXPECT_EQ(VexObject(Probe::property(to, "inclusive")).GetParent(), to);
    EXPECT_FALSE(VexObject(Probe::property(filter, "plain")).hasProperties());
}

TEST(ModelWriter, StatesTheLocalesOfTheModel) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.setDefaultLocale(u"de-at");
    EXPECT_TRUE(writer.openLocales());
    writer.addLocale(u"en");
    writer.addLocale(u"DE_at");
    writer.closeLocales();
    auto const model = written.finish();
    VEX_HANDLE const root = model->GetRootObject();
    EXPECT_EQ(model->defaultLocale().getName(), "de_AT");
    ASSERT_EQ(model->locales().size(), 2U);
    EXPECT_EQ(model->locales()[0].getName(), "en");
    EXPECT_EQ(model->locales()[1].getName(), "de_AT");
    EXPECT_EQ(Probe::value(root, "defaultLocale"), "de_AT");
    EXPECT_EQ(Probe::value(root, "locales"), "(empty)");
    EXPECT_THAT(Probe::values(Probe::properties(Probe::property(root, "locales"))),
                ElementsAre("en", "de_AT"));
}

TEST(ModelWriter, StatesThatTheModelHasNoLocales) {
    WrittenModel written;
    EXPECT_TRUE(written.writer().openLocales());
    written.writer().closeLocales();
    auto const model = written.finish();
    EXPECT_TRUE(model->locales().empty());
    EXPECT_FALSE(VexObject(Probe::property(model->GetRootObject(), "locales")).hasProperties());
}

TEST(ModelWriter, MakesReferencesOfNames) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.openObject(u"namespace");
    writer.addProperty(u"name", u"Shop");
    writer.openObject(u"folder");
    writer.addProperty(u"name", u"Facts");
    writer.openObject(u"querySubject");
    writer.setId(u"q");
    writer.addProperty(u"name", u"Orders");
    writer.closeObject();
    writer.closeObject();
    writer.closeObject();
    auto const model = written.finish();
    EXPECT_EQ(model->GetObjectByReference("[Shop].[Orders]", 0), model->findById("q"));
}

TEST(ModelWriter, CopiesTheTextsThatItIsGiven) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    std::u16string text = u"first";
    writer.setId(text);
    writer.addProperty(text, text);
    text = u"later";
    auto const model = written.finish();
    EXPECT_EQ(Probe::idOf(model->GetRootObject()), "first");
    EXPECT_EQ(Probe::value(model->GetRootObject(), "first"), "first");
}

TEST(ModelWriter, KnowsANameOnce) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    EXPECT_EQ(writer.name(u"screenTip"), writer.name(u"screenTip"));
    EXPECT_EQ(writer.name(u"screenTip"), writer.countedName(u"screenTip"));
    EXPECT_NE(writer.name(u"screenTip"), writer.name(u"name"));
    EXPECT_EQ(writer.name(u"name"), writer.countedName(u"name"));
    EXPECT_TRUE(writer.name(u"").isEmpty());
    EXPECT_FALSE(writer.name(u"name").isEmpty());
}

TEST(ModelWriter, KeepsLinesAndColumnsWhenAsked) {
    WrittenModel written({.limits = {}, .keepPositions = true});
    written.moveTo({{7, 3}, ""});
    written.writer().openObject(u"a");
    written.writer().closeObject();
    auto const model = written.finish();
    auto const at = model->findPosition(model->getElement(1));
    ASSERT_TRUE(at.has_value());
    EXPECT_EQ(at->line, 7U);
    EXPECT_EQ(at->column, 3U);
}

TEST(ModelWriter, AsksForNoPositionUnlessItIsNeeded) {
    WrittenModel written;
    written.writer().openObject(u"a");
    written.writer().addProperty(u"name", u"A");
    written.writer().closeObject();
    EXPECT_EQ(written.timesAsked(), 0);
    written.writer().addProperty(u"", u"x");
    EXPECT_EQ(written.timesAsked(), 1);
}

} // namespace
