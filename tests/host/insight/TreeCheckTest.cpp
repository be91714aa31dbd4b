#include "host/insight/TreeCheck.h"

#include "host/import/xml/ModelLoader.h"
#include "host/insight/ObjectText.h"
#include "tests/host/insight/HandMadeTree.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace {

using vex::DifferenceCause;
using vex::MetObject;
using vex::ObjectFate;

std::shared_ptr<vex::Model const> const& checkedModel() {
    static auto const loaded = vex::loadModelText(R"(<model id="m" defaultLocale="en">
      <namespace id="n" name="Sales">
        <namespace id="inside" name="Inside"/>
        <querySubject id="q" name="Orders" note="[Sales].[Orders].[Total]">
          <queryItem id="i" name="Total"/></querySubject>
        <shortcut id="s" name="Again" refobj="[Sales].[Orders]"/>
      </namespace>
      <namespace id="n2" name="Sales"/>
      <dataSource id="d"/></model>)",
                                                  "m.model.xml");
    return loaded;
}

vex::TreeCheck check(std::vector<MetObject> const& met,
                     std::vector<std::string> const& accessible) {
    std::vector<bool> verdicts;
    for (std::size_t number = 0; number < checkedModel()->elementCount(); ++number) {
        std::string const id = vex::idOf(checkedModel()->getElement(number)).toUtf8();
        verdicts.push_back(std::find(accessible.begin(), accessible.end(), id) != accessible.end());
    }
    return vex::checkTrees(*checkedModel(), vex::treeOf(*checkedModel(), met), verdicts);
}

/// "id cause" of each difference; "+" before what is in the tree.
std::vector<std::string> differences(std::vector<MetObject> const& met,
                                     std::vector<std::string> const& accessible) {
    std::vector<std::string> found;
    for (vex::TreeDifference const& each : check(met, accessible).differences) {
        found.push_back((each.inTree ? "+" : "") + vex::idOf(each.object).toUtf8() + ' ' +
                        vex::codeOf(each.cause));
    }
    return found;
}

using Lines = std::vector<std::string>;

TEST(TreeCheck, FindsNothingWhereTreesAndVerdictsAgree) {
    vex::TreeCheck const found = check(
        {{"n"}, {"q", ObjectFate::Written, 0}, {"i", ObjectFate::Written, 1}}, {"n", "q", "i"});
    EXPECT_EQ(found.objects, 8U);
    EXPECT_TRUE(found.differences.empty());
    EXPECT_TRUE(found.leaks.empty());
}

/// "id objects example" of each hidden container that paths name.
std::vector<std::string> hiddenContainers(std::vector<MetObject> const& met,
                                          std::vector<std::string> const& accessible) {
    std::vector<std::string> found;
    for (vex::HiddenContainer const& each : check(met, accessible).hiddenContainers) {
        found.push_back(vex::idOf(each.container).toUtf8() + ' ' + std::to_string(each.objects) +
                        ' ' + vex::idOf(each.example).toUtf8());
    }
    return found;
}

TEST(TreeCheck, CountsTheHiddenContainersThatPathsOfShownObjectsName) {
    std::vector<MetObject> const met{
        {"n"}, {"q", ObjectFate::LeftOut, 0}, {"i", ObjectFate::Written, 1}};
    EXPECT_EQ(hiddenContainers(met, {"n", "i"}), (Lines{"q 1 i"}));
    EXPECT_EQ(check(met, {"n", "i"}).differences.size(), 0U);
    EXPECT_EQ(check(met, {"n", "i"}).leaks.size(), 0U);
}

TEST(TreeCheck, CountsWhatStandsDeeperInAHiddenContainerToo) {
    EXPECT_EQ(hiddenContainers({{"n", ObjectFate::LeftOut},
                                {"q", ObjectFate::Written, 0},
                                {"i", ObjectFate::Written, 1},
                                {"inside", ObjectFate::LeftOut, 0},
                                {"s", ObjectFate::LeftOut, 3},
                                {"n2", ObjectFate::Written, 4}},
                               {"q", "i", "n2"}),
              (Lines{"n 3 q", "inside 1 n2", "s 1 n2"}));
}

TEST(TreeCheck, CountsNoContainerInWhichNothingIsShownOrThatCanBeSeen) {
    EXPECT_EQ(hiddenContainers({{"n"},
                                {"q", ObjectFate::LeftOut, 0},
                                {"i", ObjectFate::LeftOut, 1},
                                {"inside", ObjectFate::WithoutName, 0}},
                               {"n"}),
              Lines());
    // Left out behind a shortcut, and accessible in its own place.
    EXPECT_EQ(hiddenContainers({{"n"},
                                {"s", ObjectFate::Written, 0, false, "n2"},
                                {"q", ObjectFate::LeftOut, 1, true},
                                {"i", ObjectFate::Written, 2, true},
                                {"q", ObjectFate::Written, 0},
                                {"i", ObjectFate::Written, 4}},
                               {"n", "s", "q", "i"}),
              Lines());
}

TEST(TreeCheck, KnowsWhyTreesShowMore) {
    EXPECT_EQ(differences({{"n"},
                           {"inside", ObjectFate::Written, 0},
                           {"s", ObjectFate::Written, 0, false, "q"},
                           {"i", ObjectFate::Written, 2, true}},
                          {}),
              (Lines{"+n start", "+inside namespace-of-shown", "+i behind-shortcut",
                     "+s shortcut-untested"}));
}

TEST(TreeCheck, KnowsWhyTreesShowLess) {
    EXPECT_EQ(differences({{"n"},
                           {"q", ObjectFate::WithoutName, 0},
                           {"i", ObjectFate::WithItsContainer, 1},
                           {"s", ObjectFate::NothingToStandFor, 0}},
                          {"n", "q", "i", "s", "inside", "n2", "d"}),
              (Lines{"inside not-gone-into", "q without-name", "i container-unnamed",
                     "s nothing-to-stand-for", "n2 no-tree-starts", "d outside-namespaces"}));
}

TEST(TreeCheck, FindsWhatNothingExplains) {
    EXPECT_EQ(differences({{"n"}, {"q", ObjectFate::Written, 0}, {"i", ObjectFate::LeftOut, 1}},
                          {"n", "i"}),
              (Lines{"+q unexplained", "i unexplained"}));
}

TEST(TreeCheck, TakesAnObjectAsShownInItsPlaceWhenItIsShownBehindAShortcutToo) {
    EXPECT_EQ(
        differences({{"n"}, {"q", ObjectFate::Written, 0, true}, {"q", ObjectFate::Written, 0}},
                    {"n"}),
        Lines{"+q unexplained"});
}

TEST(TreeCheck, FindsLeaksInWhatTreesShowAboutWhatNeitherShows) {
    std::vector<MetObject> const met{{"n"}, {"q", ObjectFate::Written, 0}};
    vex::TreeCheck const leaking = check(met, {"n", "q"});
    ASSERT_EQ(leaking.leaks.size(), 1U);
    EXPECT_EQ(vex::idOf(leaking.leaks[0].object), "q");
    EXPECT_EQ(leaking.leaks[0].property, "note");
    EXPECT_EQ(vex::idOf(leaking.leaks[0].named), "i");
    EXPECT_EQ(leaking.leaks[0].reference, "[Sales].[Orders].[Total]");
    EXPECT_TRUE(check(met, {"n", "q", "i"}).leaks.empty());
}

TEST(DifferenceCauses, AreRequiredButForTheUnexplainedOne) {
    for (int number = 0; number <= static_cast<int>(DifferenceCause::Unexplained); ++number) {
        auto const cause = static_cast<DifferenceCause>(number);
        EXPECT_EQ(vex::isRequired(cause), cause != DifferenceCause::Unexplained);
        EXPECT_STRNE(vex::codeOf(cause), "");
        EXPECT_STRNE(vex::textOf(cause), "");
    }
}

TEST(DifferenceCauses, AreToldInWords) {
    EXPECT_STREQ(vex::textOf(DifferenceCause::Start), "shown because a tree starts at it");
    EXPECT_STREQ(vex::textOf(DifferenceCause::OutsideNamespaces), "in no namespace");
    EXPECT_STREQ(vex::textOf(DifferenceCause::Unexplained), "for no reason that is known");
}

TEST(TreeCheck, DoesNotLetAShortcutHideThatATextLeaks) {
    vex::TreeCheck const found = check({{"n"},
                                        {"q", ObjectFate::Written, 0},
                                        {"s", ObjectFate::Written, 0, false, "q"},
                                        {"i", ObjectFate::Written, 2, true}},
                                       {"n", "q"});
    ASSERT_EQ(found.leaks.size(), 1U);
    EXPECT_EQ(vex::idOf(found.leaks[0].named), "i");
}

TEST(TreeCheck, KnowsWhatIsShownPastTheViews) {
    for (DifferenceCause const cause :
         {DifferenceCause::Start, DifferenceCause::NamespaceOfShown,
          DifferenceCause::ShortcutUntested, DifferenceCause::BehindShortcut}) {
        EXPECT_TRUE(vex::isShownPastViews(cause)) << vex::codeOf(cause);
    }
    EXPECT_FALSE(vex::isShownPastViews(DifferenceCause::WithoutName));
    EXPECT_FALSE(vex::isShownPastViews(DifferenceCause::Unexplained));
}

} // namespace
