#include "tests/host/insight/FindingsOf.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vex::Diagnostics;

using vex::findingsOf;
using vex::warningsOf;

TEST(ModelChecks, FindNothingInASoundModel) {
    EXPECT_THAT(warningsOf("<namespace name='A'><x id='1' name='B'/>"
                           "<shortcut name='C' refobj='[A].[B]'/></namespace>"
                           "<securityViews><securityView id='v'><set kind='included'>"
                           "<item>1</item></set></securityView></securityViews>"),
                IsEmpty());
}

TEST(ModelChecks, FindAShortcutToNothing) {
    EXPECT_THAT(warningsOf("<namespace name='A'>\n<shortcut name='C' refobj='[A].[None]'/>\n"
                           "<shortcut name='D' refobj='A'/></namespace>"),
                ElementsAre("dangling-refobj@3", "dangling-refobj@4"));
}

TEST(ModelChecks, FindAShortcutWithoutTarget) {
    EXPECT_THAT(warningsOf("<namespace name='A'>\n<shortcut name='C'/></namespace>"),
                ElementsAre("shortcut-without-target@3"));
}

TEST(ModelChecks, FindAShortcutToItself) {
    EXPECT_THAT(warningsOf("<namespace name='A'>\n<shortcut name='C' refobj='[A].[C]'/>"
                           "</namespace>"),
                ElementsAre("endless-shortcut@3"));
}

TEST(ModelChecks, FindAShortcutToAnAncestor) {
    EXPECT_THAT(warningsOf("<namespace name='A'><folder name='F'>\n"
                           "<shortcut name='C' refobj='[A]'/></folder></namespace>"),
                ElementsAre("endless-shortcut@3"));
}

TEST(ModelChecks, FindEveryShortcutOfACycleAndNoOther) {
    EXPECT_THAT(warningsOf("<namespace name='A'>\n<shortcut name='C' refobj='[B]'/></namespace>"
                           "<namespace name='B'>\n<shortcut name='D' refobj='[A]'/></namespace>"
                           "<namespace name='E'>\n<shortcut name='F' refobj='[A]'/></namespace>"),
                ElementsAre("endless-shortcut@3", "endless-shortcut@4"));
}

TEST(ModelChecks, NameTheWholeCycleOfAnEndlessShortcut) {
    auto const found = findingsOf("<namespace name='A'><x name='X'>"
                                  "<shortcut name='C' refobj='[B]'/></x></namespace>"
                                  "<namespace name='B'><shortcut name='D' refobj='[A]'/>"
                                  "</namespace>");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_THAT(found[0].text, HasSubstr(": [A].[X].[C] -> [B] -> [B].[D] -> [A] -> [A].[X].[C];"));
    EXPECT_THAT(found[1].text, HasSubstr(": [B].[D] -> [A] -> [A].[X].[C] -> [B] -> [B].[D];"));
}

TEST(ModelChecks, NameTheCycleOfAShortcutToItselfOnce) {
    auto const found =
        findingsOf("<namespace name='A'><shortcut name='C' refobj='[A].[C]'/></namespace>");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_THAT(found[0].text, HasSubstr(": [A].[C] -> [A].[C];"));
}

TEST(ModelChecks, FindAShortcutToAReferenceThatSeveralObjectsHave) {
    EXPECT_THAT(warningsOf("<namespace name='A'><x name='B'/>\n<x name='B'/>\n"
                           "<shortcut name='C' refobj='[A].[B]'/></namespace>"),
                ElementsAre("duplicate-reference@3", "ambiguous-refobj@4"));
}

TEST(ModelChecks, FindAShortcutToAShortcut) {
    EXPECT_THAT(warningsOf("<namespace name='A'><x name='B'/>\n"
                           "<shortcut name='C' refobj='[A].[B]'/>\n"
                           "<shortcut name='D' refobj='[A].[C]'/></namespace>"),
                ElementsAre("unreachable-shortcut-target@4"));
}

TEST(ModelChecks, FindAShortcutWithTwoTargets) {
    EXPECT_THAT(warningsOf("<namespace name='A'><x name='B'/><x name='C'/>\n"
                           "<shortcut name='D' refobj='[A].[B]'>"
                           "<property name='refobj'>[A].[C]</property></shortcut></namespace>"),
                ElementsAre("unreachable-shortcut-target@3"));
}

TEST(ModelChecks, FindAShortcutWithoutName) {
    EXPECT_THAT(warningsOf("<namespace name='A'>\n<shortcut refobj='[A].[B]'/><x name='B'/>"
                           "</namespace>"),
                ElementsAre("shortcut-without-name@3"));
}

TEST(ModelChecks, FindTheSecondObjectWithOneReference) {
    EXPECT_THAT(warningsOf("<namespace name='A'><folder name='F'><x name='B'/></folder>\n"
                           "<x name='B'/></namespace>"),
                ElementsAre("duplicate-reference@3"));
}

TEST(ModelChecks, LeaveObjectsWithoutNameAlone) {
    EXPECT_THAT(warningsOf("<namespace name='A'><x/><x/></namespace>"), IsEmpty());
}

TEST(ModelChecks, FindAGrantOfAViewThatTheModelLacks) {
    auto const model = vex::loadModelText(
        "<model><securityViews><securityView id='v1'/></securityViews></model>", "m.xml");
    Diagnostics found;
    auto const catalogue = vex::readCatalogueText(
        "<catalog><model path='/content/m' file='m.xml'><grant role='r' view='v1'/>\n"
        "<grant role='r' view='v2'/></model><user name='u'><role>r</role></user></catalog>",
        "c.xml", "", found);
    std::string const file = "c.xml";
    vex::CatalogueFindings findings(file, found);
    vex::GrantCheck(*catalogue, findings).check(catalogue->models[0], vex::GrantedModel(*model));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].rule, "granted-view-missing");
    EXPECT_EQ(found[0].line, 2U);
}

TEST(ModelChecks, FindEachRoleThatNoUserHasOnce) {
    auto const model = vex::loadModelText(
        "<model><securityViews><securityView id='v' roleBased='true'><member roleId='m'/>"
        "<member roleId='held'/></securityView></securityViews></model>",
        "m.xml");
    Diagnostics found;
    auto const catalogue = vex::readCatalogueText(
        "<catalog><model path='/content/m' file='m.xml'>\n<grant role='g' view='v'/>\n"
        "<grant role='g' view='v'/><grant role='held' view='v'/></model>"
        "<user name='u'><role>held</role></user></catalog>",
        "c.xml", "", found);
    std::string const file = "c.xml";
    vex::CatalogueFindings findings(file, found);
    vex::GrantCheck(*catalogue, findings).check(catalogue->models[0], vex::GrantedModel(*model));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].rule, "role-without-user");
    EXPECT_EQ(found[0].line, 2U);
    EXPECT_THAT(found[0].text, HasSubstr("\"g\""));
    EXPECT_EQ(found[1].line, 1U);
    EXPECT_THAT(found[1].text, HasSubstr("\"m\""));
}

TEST(ModelChecks, FindAModelPathUnderWhichNobodyIsRestricted) {
    Diagnostics found;
    auto const catalogue = vex::readCatalogueText(
        "<catalog><model path='/content/m' file='m.xml'/><model path='/m' file='m.xml'/></catalog>",
        "c.xml", "", found);
    std::string const file = "c.xml";
    vex::CatalogueFindings findings(file, found);
    vex::checkCatalogue(*catalogue, findings);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].rule, "unrestricted-path");
}

TEST(ModelChecks, FindAUserWhoMayUseNoView) {
    auto const linesOf = [](std::string const& models) {
        Diagnostics found;
        auto const catalogue = vex::readCatalogueText(
            "<catalog>" + models +
                "\n<user name='a'><role>r</role></user>\n<user name='b'/></catalog>",
            "c.xml", "", found);
        std::string const file = "c.xml";
        vex::CatalogueFindings findings(file, found);
        vex::checkCatalogue(*catalogue, findings);
        std::vector<std::string> lines;
        for (vex::Diagnostic const& each : found) {
            lines.push_back(each.rule + '@' + std::to_string(each.line));
        }
        return lines;
    };
    EXPECT_THAT(linesOf("<model path='/content/m' file='m.xml'><grant role='r' view='v'/></model>"),
                ElementsAre("user-without-view@3"));
    EXPECT_THAT(linesOf("<model path='/m' file='m.xml'/>"), ElementsAre("unrestricted-path@1"));
    EXPECT_THAT(linesOf(""), IsEmpty());
}

} // namespace
