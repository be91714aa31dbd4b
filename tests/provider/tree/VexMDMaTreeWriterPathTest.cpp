// The "_path" and "_ref" of written objects, and constraints on start objects.

#include "tests/provider/ProviderScene.h"

#include <gtest/gtest.h>

namespace {

constexpr char PathModel[] = R"(
<model id="m" defaultLocale="en">
  <namespace id="n" name="Sales">
    <folder id="f" name="Facts">
      <querySubject id="q" name="Orders" a="1" b="2"><queryItem id="i" name="A]b" a="1"/>
        <queryItem id="i2"/></querySubject>
    </folder>
  </namespace>
</model>)";

std::string tree(std::string const& start, std::string const& rest) {
    return "<Metadata start_at='" + start + "'>" + rest +
           "<Property a='*/folder'/><Property a='*/querySubject'/>"
           "<Property a='*/queryItem'/></Metadata>";
}

class PathAttribute : public testing::Test {
protected:
    ProviderScene scene{PathModel};
};

using ReferenceAttribute = PathAttribute;
using Constraint = PathAttribute;

TEST_F(PathAttribute, OfAStartObjectIsTheStartPathAsItWasGiven) {
    EXPECT_EQ(scene.ask("<Metadata Depth='1' start_at=' [Sales] . [No] . [Facts]'>"
                        "<Property a='*/@_path'/><Property a='*/folder'/></Metadata>"),
              R"(<folder _path=" [Sales] . [No] . [Facts]"/>)");
}

TEST_F(PathAttribute, OfAMemberAddsItsNameToItsContainers) {
    EXPECT_EQ(scene.ask(tree("[Sales].[Facts]", "<Property a='*/@_path'/>")),
              R"(<folder _path="[Sales].[Facts]"><querySubject _path="[Sales].[Facts].[Orders]">)"
              R"(<queryItem _path="[Sales].[Facts].[Orders].[A]b]"/>)"
              R"(<queryItem _path="[Sales].[Facts].[Orders].[]"/></querySubject></folder>)");
}

TEST_F(PathAttribute, LeavesOutTheNamesOfContainersThatHaveNone) {
    EXPECT_EQ(scene.ask(tree("[Sales].[Facts]", "<Property a='*/@ID'/>"
                                                "<Property a='queryItem/@_path'/>")),
              R"(<folder ID="f"><querySubject ID="q">)"
              R"(<queryItem ID="i" _path="[Sales].[Facts].[A]b]"/>)"
              R"(<queryItem ID="i2" _path="[Sales].[Facts].[]"/></querySubject></folder>)");
}

TEST_F(PathAttribute, GrowsWithEachTimeThatItIsAskedFor) {
    EXPECT_EQ(scene.ask(tree("[Sales].[Facts]", "<Property a='*/@_path'/>"
                                                "<Property a='querySubject/@_path'/>")),
              R"(<folder _path="[Sales].[Facts]">)"
              R"(<querySubject _path="[Sales].[Facts].[Orders].[Orders]">)"
              R"(<queryItem _path="[Sales].[Facts].[Orders].[Orders].[A]b]"/>)"
              R"(<queryItem _path="[Sales].[Facts].[Orders].[Orders].[]"/>)"
              R"(</querySubject></folder>)");
}

TEST_F(ReferenceAttribute, NamesQuerySubjectsAndQueryItemsInTheNearestNamespace) {
    EXPECT_EQ(
        scene.ask(tree("[Sales]", "<Property a='*/@_ref'/>")),
        R"(<folder _ref="[Sales]"><folder _ref="[Sales]"><querySubject _ref="[Sales].[Orders]">)"
        R"(<queryItem _ref="[Sales].[Orders].[A]b]"/><queryItem _ref="[Sales].[Orders].[]"/>)"
        R"(</querySubject></folder></folder>)");
}

TEST_F(ReferenceAttribute, OfAStartObjectComesFromTheWalkToIt) {
    EXPECT_EQ(scene.ask(tree("[Sales].[Facts].[Orders]", "<Property a='*/@_ref'/>")),
              R"(<querySubject _ref="[Sales].[Orders]"><queryItem _ref="[Sales].[Orders].[A]b]"/>)"
              R"(<queryItem _ref="[Sales].[Orders].[]"/></querySubject>)");
}

TEST_F(ReferenceAttribute, LeavesOutContainersThatHaveNone) {
    EXPECT_EQ(scene.ask(tree("[Sales].[Facts]", "<Property a='*/@ID'/>"
                                                "<Property a='queryItem/@_ref'/>")),
              R"(<folder ID="f"><querySubject ID="q"><queryItem ID="i" _ref="[Sales].[A]b]"/>)"
              R"(<queryItem ID="i2" _ref="[Sales].[]"/></querySubject></folder>)");
}

TEST_F(ReferenceAttribute, GrowsWithEachTimeThatItIsAskedFor) {
    EXPECT_EQ(scene.ask(tree("[Sales].[Facts]", "<Property a='querySubject/@_ref'/>"
                                                "<Property a='querySubject/@_ref'/>"
                                                "<Property a='*/@_ref'/>")),
              R"(<folder _ref="[Sales]">)"
              R"(<querySubject _ref="[Sales].[Orders].[Orders].[Orders]">)"
              R"(<queryItem _ref="[Sales].[Orders].[Orders].[Orders].[A]b]"/>)"
              R"(<queryItem _ref="[Sales].[Orders].[Orders].[Orders].[]"/>)"
              R"(</querySubject></folder>)");
}

std::string constrained(std::string const& constraints) {
    return "<Metadata Depth='1' start_at='[Sales].[Facts].[Orders]'>" + constraints +
           "<Property a='*/@a'/><Property a='*/@b'/><Property a='*/@name'/>"
           "<Property a='*/folder'/><Property a='*/querySubject'/></Metadata>";
}

TEST_F(Constraint, LetsAnEqualValuePass) {
    EXPECT_EQ(scene.ask(constrained("<Constraint c='./@a=[1]'/>")),
              R"(<querySubject a="1" b="2" name="Orders"/>)");
}

TEST_F(Constraint, WithholdsAnAttributeWithAnotherValue) {
    EXPECT_EQ(scene.ask(constrained("<Constraint c='./@a=[2]'/>")),
              R"(<querySubject b="2" name="Orders"/>)");
    EXPECT_EQ(scene.ask(constrained("<Constraint c='querySubject/@name=[x]'/>")),
              R"(<querySubject a="1" b="2"/>)");
}

// covers quirk: only-the-first-constraint-withholds
TEST_F(Constraint, WithholdsNothingBehindTheFirstInKeyOrder) {
    EXPECT_EQ(scene.ask(constrained("<Constraint c='./@a=[1]'/><Constraint c='./@b=[1]'/>")),
              R"(<querySubject a="1" b="2" name="Orders"/>)");
    EXPECT_EQ(scene.ask(constrained("<Constraint c='./@b=[1]'/><Constraint c='./@a=[2]'/>")),
              R"(<querySubject b="2" name="Orders"/>)");
    EXPECT_EQ(scene.ask(constrained("<Constraint c='./@a=[2]'/><Constraint c='./@Z=[1]'/>")),
              R"(<querySubject a="1" b="2" name="Orders"/>)");
}

TEST_F(Constraint, BindsPathsAndReferencesToo) {
    EXPECT_EQ(scene.ask("<Metadata Depth='1'><Constraint c='./@_path=[x]'/>"
                        "<Property a='*/@_path'/><Property a='*/@name'/></Metadata>"),
              R"(<folder name="Sales"/>)");
}

TEST_F(Constraint, LeavesOutAStartObjectThatItTakesAllAttributesFrom) {
    EXPECT_EQ(scene.ask(tree("[Sales]", "<Constraint c='./@name=[x]'/>"
                                        "<Property a='*/@name'/>")),
              "");
}

TEST_F(Constraint, BindsNoMember) {
    EXPECT_EQ(scene.ask(tree("[Sales].[Facts].[Orders]", "<Constraint c='./@a=[2]'/>"
                                                         "<Property a='*/@a'/>"
                                                         "<Property a='*/@b'/>")),
              R"(<querySubject b="2"><queryItem a="1"/></querySubject>)");
}

} // namespace
