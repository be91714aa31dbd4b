#include "host/insight/AnsweredTree.h"

#include "KRLIDOM_Reader.h"
#include "host/import/xml/ModelLoader.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/HostException.h"
#include "tests/support/Casts.h"

#include <gtest/gtest.h>

namespace {

using vex::AnsweredObject;
using vex::ObjectFate;

std::shared_ptr<vex::Model const> const& shop() {
    static auto const loaded = vex::loadModelText(casts::shopOfAllEnds(), "m.model.xml");
    return loaded;
}

/// "id fate" of each entry, with "id of its container" and "!" behind shortcuts.
std::vector<std::string> match(std::string const& result) {
    vex::TreeQuestion question;
    question.collections = vex::collectionsOf(*shop());
    question.marker = vex::unusedPropertyOf(*shop());
    auto const document =
        KRLIDOM_Reader::parse("<Response><Result>" + result + "</Result></Response>", "answer", {});
    auto const tree = vex::matchAnswer(*shop(), shop()->defaultLocale(), question,
                                       document.document().getDocumentElement());
    std::vector<std::string> lines;
    constexpr char const* fates[] = {"written", "left-out", "without-name", "with-container",
                                     "nothing"};
    for (AnsweredObject const& entry : tree) {
        lines.push_back(vex::idOf(entry.object).toUtf8() + ' ' +
                        fates[static_cast<int>(entry.fate)] +
                        (entry.container == AnsweredObject::None
                             ? ""
                             : " in " + vex::idOf(tree[entry.container].object).toUtf8()) +
                        (entry.behindShortcut ? " behind" : ""));
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(AnsweredTree, KnowsWhatIsWrittenLeftOutAndLifted) {
    EXPECT_EQ(match(R"(<folder ID="n" name="Sales" _path="[Sales]">
        <querySubject ID="q" name="Orders" _path="[Sales].[Facts].[Orders]"/>
        <filter ID="nameless" _path="[Sales].[]"/>
        <querySubject name="Again" ID="q" _path="[Sales].[Again]"
            standsForShortcut="[Sales].[Again]">
          <queryItem ID="i" name="Total" _path="[Sales].[Again].[Total]"/></querySubject>
      </folder>)"),
              (Lines{"n written", "f left-out in n", "q written in f", "i left-out in q",
                     "nameless without-name in n", "inner with-container in nameless",
                     "s written in n", "i written in s behind", "none nothing in n"}));
}

TEST(AnsweredTree, TellsAShortcutFromItsTargetBesideIt) {
    EXPECT_EQ(match(R"(<folder ID="n" name="Sales" _path="[Sales]">
        <querySubject name="Again" ID="q" _path="[Sales].[Again]"
            standsForShortcut="[Sales].[Again]"/></folder>)")[2],
              "q left-out in f");
}

TEST(AnsweredTree, IsEmptyWhenNothingWasWritten) {
    EXPECT_EQ(match(""), Lines{});
}

TEST(AnsweredTree, RefusesAnAnswerThatTheModelDoesNotExplain) {
    EXPECT_THROW(
        match(R"(<folder ID="n" name="Sales" _path="[Sales]"><alien _path="x"/></folder>)"),
        vex::HostException);
    EXPECT_THROW(match(R"(<folder ID="n" _path="[Sales]"/><folder ID="n" _path="[Sales]"/>)"),
                 vex::HostException);
    EXPECT_THROW(match(R"(<folder _path="[Sales]"/>)"), vex::HostException);
}

TEST(TreeQuestion, GoesIntoEveryClassOfTheModelButTheTwoThatAreAlwaysGoneInto) {
    std::vector<I18NString> const expected{"folder", "querySubject", "queryItem", "filter"};
    EXPECT_EQ(vex::collectionsOf(*shop()), expected);
}

TEST(TreeQuestion, AsksForAPropertyThatTheModelLacks) {
    auto const taken = vex::loadModelText(R"(<model standsForShortcut="x"/>)", "t.model.xml");
    EXPECT_EQ(vex::unusedPropertyOf(*taken), "standsForShortcut_");
}

TEST(TreeStarts, AreTheOuterNamespacesThatTheirNamesLeadTo) {
    auto const spaces = vex::loadModelText(R"(<model defaultLocale="en">
        <namespace id="a" name="A"><namespace id="b" name="B"/></namespace>
        <namespace id="b2" name="B"/><namespace id="c" name="C ]"/><namespace id="d"/></model>)",
                                           "s.model.xml");
    std::vector<std::string> starts;
    for (vex::TreeStart const& start : vex::treeStartsOf(*spaces, spaces->defaultLocale())) {
        starts.push_back(vex::idOf(start.space).toUtf8() + ' ' + start.path.toUtf8());
    }
    EXPECT_EQ(starts, (Lines{"a [A]", "b2 ", "c [C ]]]", "d "}));
}

TEST(AnsweredTree, IsContinuedBelowTheEntryThatTheOtherTreeStartsAt) {
    vex::AnsweredTree tree(2);
    tree[0].object = shop()->findById("n");
    tree[1].object = shop()->findById("s");
    tree[1].container = 0;
    tree[1].members = vex::MembersMet::TooDeep;
    vex::AnsweredTree further(3);
    further[0].object = shop()->findById("s");
    further[1].object = shop()->findById("i");
    further[1].container = 0;
    further[2].object = shop()->findById("q");
    further[2].container = 1;
    vex::continueTree(tree, 1, further);
    ASSERT_EQ(tree.size(), 4U);
    EXPECT_EQ(tree[1].members, vex::MembersMet::Here);
    EXPECT_EQ(tree[2].container, 1U);
    EXPECT_EQ(tree[3].container, 2U);
    EXPECT_THROW(vex::continueTree(tree, 0, further), vex::HostException);
    EXPECT_THROW(vex::continueTree(tree, 0, {}), vex::HostException);
}

TEST(NotGoneIntoAgain, IsEachObjectWhoseMembersAreElsewhereOnce) {
    vex::AnsweredTree tree(3);
    for (AnsweredObject& entry : tree) {
        entry.object = shop()->findById("s");
    }
    EXPECT_TRUE(vex::notGoneIntoAgain(tree).empty());
    tree[1].members = vex::MembersMet::Elsewhere;
    tree[2].members = vex::MembersMet::Elsewhere;
    EXPECT_EQ(vex::notGoneIntoAgain(tree).size(), 1U);
}

TEST(StartPath, NamesAnElementByAllThatItStandsIn) {
    I18NLocale const locale("en");
    EXPECT_EQ(vex::startPathOf(shop()->findById("i"), locale), "[Sales].[Facts].[Orders].[Total]");
    EXPECT_EQ(vex::startPathOf(shop()->findById("inner"), locale), "");
}

} // namespace
