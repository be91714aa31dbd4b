#include "tests/host/store/image/ModelProbe.h"

#include <gtest/gtest.h>

namespace {

using Probe = ModelProbe;

char const* const nested = R"(<model defaultLocale="en">
  <namespace id="n" name="N">
    <folder id="f" name="F">
      <querySubject id="q" name="Q">
        <queryItemFolder id="d" name="D"><queryItem id="i" name="I"/></queryItemFolder>
        <queryItem id="bracket" name="a]b"/>
      </querySubject>
    </folder>
    <namespace id="inner" name="M"><querySubject id="q2" name="Q"/></namespace>
    <querySubject id="local"><property name="name" locale="de">D</property>
      <property name="name" locale="en">E</property></querySubject>
    <filter id="nameless"/>
    <querySubject id="again" name="Q"/>
  </namespace>
  <querySubject id="outside" name="Q"/>
  <namespace id="twin" name="N"><filter id="g" name="G"/></namespace>
</model>)";

TEST(ModelReference, OfANamespaceIsItsNameAndTheFirstOfThatNameAnswers) {
    Probe const probe(nested);
    EXPECT_EQ(probe.reference("[N]"), probe.id("n"));
    EXPECT_EQ(probe.reference("[M]"), probe.id("inner"));
}

TEST(ModelReference, OfAnotherElementBeginsAtTheNearestNamespaceAndLeavesFoldersOut) {
    Probe const probe(nested);
    EXPECT_EQ(probe.reference("[N].[Q]"), probe.id("q"));
    EXPECT_EQ(probe.reference("[N].[Q].[I]"), probe.id("i"));
    EXPECT_EQ(probe.reference("[M].[Q]"), probe.id("q2"));
    EXPECT_FALSE(probe.reference("[N].[F].[Q]").IsNotNull());
    EXPECT_FALSE(probe.reference("[N].[M].[Q]").IsNotNull());
}

TEST(ModelReference, OfAFolderEndsWithItsOwnName) {
    Probe const probe(nested);
    EXPECT_EQ(probe.reference("[N].[F]"), probe.id("f"));
    EXPECT_EQ(probe.reference("[N].[Q].[D]"), probe.id("d"));
}

TEST(ModelReference, ReachesIntoEveryNamespaceOfOneName) {
    Probe const probe(nested);
    EXPECT_EQ(probe.reference("[N].[G]"), probe.id("g"));
}

TEST(ModelReference, UsesTheNamesOfTheDefaultLocale) {
    Probe const probe(nested);
    EXPECT_EQ(probe.reference("[N].[E]"), probe.id("local"));
    EXPECT_FALSE(probe.reference("[N].[D]").IsNotNull());
}

TEST(ModelReference, CountsAnEmptyNameAsAName) {
    Probe const probe(nested);
    EXPECT_EQ(probe.reference("[N].[]"), probe.id("nameless"));
}

TEST(ModelReference, NamesNothingOutsideNamespacesAndNothingThatIsNotThere) {
    Probe const probe(nested);
    for (char const* const text :
         {"", " ", "[Q]", "[N].[Q].[I].[I]", "[n]", "N", "[N].", "[N][Q]"}) {
        EXPECT_FALSE(probe.reference(text).IsNotNull()) << text;
    }
    EXPECT_FALSE(probe.model().GetObjectByReference("[N]", 1).IsNotNull());
}

TEST(ModelReference, IsSplitLikeAStartPath) {
    Probe const probe(nested);
    EXPECT_EQ(probe.reference(" [N] . [Q] "), probe.id("q"));
    EXPECT_EQ(probe.reference("[N].[Q].[a]]b]"), probe.id("bracket"));
    EXPECT_FALSE(probe.reference("[N].[Q].[a]b]").IsNotNull());
}

TEST(ModelReference, ThatAnElementTellsLeadsBackToIt) {
    Probe const probe(nested);
    for (char const* const id : {"n", "f", "q", "d", "i", "bracket", "inner", "local", "g"}) {
        I18NString reference;
        EXPECT_TRUE(probe.model().getReference(probe.id(id), reference)) << id;
        EXPECT_EQ(probe.model().GetObjectByReference(reference, 0), probe.id(id)) << id;
    }
    I18NString reference;
    probe.model().getReference(probe.id("bracket"), reference);
    EXPECT_EQ(reference, "[N].[Q].[a]]b]");
}

TEST(ModelReference, IsNotToldByWhatHasNone) {
    Probe const probe(nested);
    I18NString reference;
    EXPECT_FALSE(probe.model().getReference(probe.id("outside"), reference));
    EXPECT_FALSE(probe.model().getReference(probe.root(), reference));
    EXPECT_FALSE(probe.model().getReference(Probe::property(probe.id("n"), "name"), reference));
    EXPECT_FALSE(probe.model().getReference(VEX_HANDLE(), reference));
    EXPECT_TRUE(reference.empty());
}

} // namespace
