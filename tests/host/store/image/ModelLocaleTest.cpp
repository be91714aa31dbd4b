#include "tests/host/store/image/ModelProbe.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

using Probe = ModelProbe;

char const* const localisedModel = R"(<model defaultLocale="fr">
  <a id="all"><property name="n" locale="de">de</property><property name="n" locale="fr">fr</property>
    <property name="n">plain</property><property name="n" locale="de_AT">at</property></a>
  <a id="some"><property name="n" locale="de">de</property><property name="m">m</property>
    <property name="n" locale="fr">fr</property></a>
  <a id="other"><property name="n" locale="de">de</property><property name="n" locale="it">it</property></a>
  <a id="hole"><property name="n" locale="de_AT"/><property name="n" locale="de">de</property>
    <property name="n">plain</property></a>
  <a id="twice" n="first"><property name="n">second</property></a>
</model>)";

TEST(ModelLocale, FindsTheValueOfTheLocaleItself) {
    Probe const probe(localisedModel);
    EXPECT_EQ(Probe::value(probe.id("all"), "n", "de_AT"), "at");
    EXPECT_EQ(Probe::value(probe.id("all"), "n", "de"), "de");
}

TEST(ModelLocale, FindsTheNearestParentsValueOtherwise) {
    Probe const probe(localisedModel);
    EXPECT_EQ(Probe::value(probe.id("all"), "n", "de_AT_XX"), "at");
    EXPECT_EQ(Probe::value(probe.id("all"), "n", "de_CH"), "de");
}

TEST(ModelLocale, FindsTheUnlocalisedValueOtherwise) {
    Probe const probe(localisedModel);
    EXPECT_EQ(Probe::value(probe.id("all"), "n", "ja"), "plain");
}

TEST(ModelLocale, FindsNothingOtherwiseNotEvenTheDefaultLocales) {
    Probe const probe(localisedModel);
    EXPECT_EQ(Probe::value(probe.id("some"), "n", "ja"), "(none)");
}

TEST(ModelLocale, NullFindsTheUnlocalisedValueThenTheDefaultLocalesThenTheFirst) {
    Probe const probe(localisedModel);
    EXPECT_EQ(Probe::value(probe.id("all"), "n"), "plain");
    EXPECT_EQ(Probe::value(probe.id("some"), "n"), "fr");
    EXPECT_EQ(Probe::value(probe.id("other"), "n"), "de");
}

TEST(ModelLocale, TheFirstValueIsTheDocumentsWhateverLocaleWasKnownFirst) {
    I18NLocale const knownFirst{I18NString("sw")};
    Probe const probe("<model defaultLocale='fr'><a id='a'>"
                      "<property name='n' locale='xh'>xh</property>"
                      "<property name='m'>m</property>"
                      "<property name='n' locale='sw'>sw</property></a></model>");
    EXPECT_EQ(Probe::value(probe.id("a"), "n"), "xh");
    EXPECT_EQ(Probe::value(probe.id("a"), "n", "sw"), "sw");
    EXPECT_THAT(Probe::values(Probe::properties(probe.id("a"))), ElementsAre("xh", "m"));
}

TEST(ModelLocale, OfManyValuesOfOneNameEachIsFound) {
    std::string text = "<model><a id='a'>";
    for (int number = 0; number < 50; ++number) {
        std::string const plain = std::to_string(number);
        text += "<property name='n' locale='de_AT_X" + plain + "'>" + plain + "</property>" +
                "<property name='n'>plain" + plain + "</property>";
    }
    Probe const probe(text + "</a></model>");
    for (int number = 0; number < 50; ++number) {
        std::string const plain = std::to_string(number);
        EXPECT_EQ(Probe::value(probe.id("a"), "n", ("de_AT_X" + plain).c_str()), plain);
    }
    EXPECT_EQ(Probe::value(probe.id("a"), "n", "de_AT"), "plain0");
    EXPECT_EQ(Probe::value(probe.id("a"), "n"), "plain0");
    std::vector<std::string> const listed = Probe::values(Probe::properties(probe.id("a")));
    ASSERT_EQ(listed.size(), 50U);
    EXPECT_EQ(listed.front(), "plain0");
    EXPECT_EQ(listed.back(), "plain49");
}

TEST(ModelLocale, AnswersWithNothingForALocaleThatHasNoText) {
    Probe const probe(localisedModel);
    EXPECT_EQ(Probe::value(probe.id("hole"), "n", "de_AT"), "(empty)");
    EXPECT_EQ(Probe::value(probe.id("hole"), "n", "de"), "de");
}

TEST(ModelLocale, OfALocalisedPropertyShowsOnceInAListWhereItsFirstValueStands) {
    Probe const probe(localisedModel);
    EXPECT_THAT(Probe::values(Probe::properties(probe.id("some"))), ElementsAre("fr", "m"));
    EXPECT_THAT(Probe::values(Probe::properties(probe.id("other"))), ElementsAre("de"));
}

TEST(ModelLocale, IsNotShownInAListWhenAnUnlocalisedValueIsThere) {
    Probe const probe(localisedModel);
    EXPECT_THAT(Probe::values(Probe::properties(probe.id("all"))), ElementsAre("plain"));
}

TEST(ModelLocale, LeavesTwoUnlocalisedValuesTwoPropertiesOfWhichTheFirstIsFound) {
    Probe const probe(localisedModel);
    EXPECT_THAT(Probe::values(Probe::properties(probe.id("twice"))),
                ElementsAre("first", "second"));
    EXPECT_EQ(Probe::value(probe.id("twice"), "n"), "first");
    EXPECT_EQ(Probe::value(probe.id("twice"), "n", "de"), "first");
}

TEST(ModelLocale, ComparesSpellingsInTheirCanonicalForm) {
    Probe const probe(
        "<model><a id='1'><property name='n' locale='de-at'>v</property></a></model>");
    EXPECT_EQ(Probe::value(probe.id("1"), "n", "de_AT"), "v");
    EXPECT_EQ(Probe::value(probe.id("1"), "n", "DE_at"), "v");
}

TEST(ModelLocale, GivesOneNameOfASimplePropertyThePrecedenceOverACollection) {
    // The simple property is there, though not in this locale.
    Probe const probe(
        "<model><a id='1'><property name='b' locale='de'>v</property><b/></a></model>");
    EXPECT_EQ(Probe::value(probe.id("1"), "b", "fr"), "(none)");
}

} // namespace
