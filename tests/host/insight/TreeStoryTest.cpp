#include "host/insight/TreeStory.h"

#include "host/import/xml/ModelLoader.h"
#include "tests/host/insight/HandMadeTree.h"
#include "tests/support/Casts.h"

#include <gtest/gtest.h>

namespace {

using vex::MetObject;
using vex::ObjectFate;

std::shared_ptr<vex::Model const> const& toldModel() {
    static auto const loaded = vex::loadModelText(casts::shopOfAllEnds(R"(
      <namespace id="n2" name="Sales"><folder id="f2" name="Lost"/></namespace>
      <dataSource id="d" name="Store"/>)"),
                                                  "m.model.xml");
    return loaded;
}

std::vector<std::string> treatment(char const* id, std::vector<MetObject> const& met,
                                   bool isIncluded = true) {
    vex::AnsweredTree const tree = vex::treeOf(*toldModel(), met);
    return vex::TreeStory(toldModel()->defaultLocale(), tree)
        .treatmentOf(toldModel()->findById(id), isIncluded);
}

using Sentences = std::vector<std::string>;

TEST(TreeStory, TellsWhereAnObjectIsWritten) {
    EXPECT_EQ(treatment("f", {{"n"}, {"f", ObjectFate::Written, 0}}),
              Sentences{"written in the namespace \"Sales\" (n)"});
}

TEST(TreeStory, TellsThatAnObjectIsTheStartAndShownInAnyCase) {
    EXPECT_EQ(treatment("n", {{"n"}}), Sentences{"written as the start of a tree"});
    EXPECT_EQ(treatment("n", {{"n"}}, false),
              Sentences{"shown because it is the start of a tree, though it is not accessible"});
}

TEST(TreeStory, TellsThatAnInaccessibleObjectIsWrittenForWhatIsInsideIt) {
    EXPECT_EQ(treatment("f", {{"n"}, {"f", ObjectFate::Written, 0}}, false),
              Sentences{"written in the namespace \"Sales\" (n) though it is not accessible, for "
                        "something that is included inside it"});
}

TEST(TreeStory, NamesTheNearestContainerThatIsWritten) {
    EXPECT_EQ(treatment("q", {{"n"}, {"f", ObjectFate::LeftOut, 0}, {"q", ObjectFate::Written, 1}}),
              Sentences{"written in the namespace \"Sales\" (n)"});
}

TEST(TreeStory, TellsThatShownMembersOfALeftOutObjectAreLifted) {
    EXPECT_EQ(treatment("f", {{"n"}, {"f", ObjectFate::LeftOut, 0}, {"q", ObjectFate::Written, 1}}),
              Sentences{"left out; its members that are shown are lifted into the namespace "
                        "\"Sales\" (n)"});
}

TEST(TreeStory, TellsThatNothingInALeftOutObjectIsShown) {
    EXPECT_EQ(treatment("f", {{"n"}, {"f", ObjectFate::LeftOut, 0}, {"q", ObjectFate::LeftOut, 1}}),
              Sentences{"left out, and so is all that is in it"});
    EXPECT_EQ(treatment("q", {{"n"}, {"q", ObjectFate::LeftOut, 0}}), Sentences{"left out"});
}

TEST(TreeStory, TellsOfTheLanguageThatHasNoName) {
    std::vector<MetObject> const met{{"n"},
                                     {"nameless", ObjectFate::WithoutName, 0},
                                     {"inner", ObjectFate::WithItsContainer, 1}};
    EXPECT_EQ(treatment("nameless", met),
              Sentences{"left out with all its members: it has no name in en, and nothing else is "
                        "asked for"});
    EXPECT_EQ(treatment("inner", met),
              Sentences{"left out with the filter (nameless), which has no name in en"});
}

TEST(TreeStory, TellsThatAShortcutStandsForNothing) {
    EXPECT_EQ(treatment("s", {{"n"}, {"s", ObjectFate::NothingToStandFor, 0}}),
              Sentences{"left out: a shortcut without a name or a target is not written"});
}

std::vector<MetObject> const behind{{"n"},
                                    {"s", ObjectFate::Written, 0, false, "q"},
                                    {"i", ObjectFate::Written, 1, true},
                                    {"f", ObjectFate::LeftOut, 1, true}};

TEST(TreeStory, TellsWhatAShortcutIsWrittenAsAndThatNothingIsTested) {
    EXPECT_EQ(treatment("s", behind),
              Sentences{"written in the namespace \"Sales\" (n) as what it stands for, the "
                        "querySubject \"Orders\" (q); neither is tested"});
}

TEST(TreeStory, TellsWhatIsWrittenAndLeftOutBehindAShortcut) {
    EXPECT_EQ(treatment("i", behind),
              Sentences{"written in the shortcut \"Again\" (s), behind which the included objects "
                        "of views are not asked for"});
    EXPECT_EQ(treatment("f", behind), Sentences{"left out behind the shortcut \"Again\" (s) too"});
}

TEST(TreeStory, TellsThroughWhichShortcutAnObjectDeepBehindItIsReached) {
    EXPECT_EQ(treatment("i", {{"n"},
                              {"s", ObjectFate::Written, 0, false, "f"},
                              {"q", ObjectFate::Written, 1, true},
                              {"i", ObjectFate::Written, 2, true}}),
              Sentences{"written in the querySubject \"Orders\" (q), reached through the shortcut "
                        "\"Again\" (s), behind which the included objects of views are not asked "
                        "for"});
}

TEST(TreeStory, TellsThatTheTargetOfAShortcutIsReachedThroughIt) {
    EXPECT_EQ(treatment("q", {{"n"},
                              {"f", ObjectFate::LeftOut, 0},
                              {"q", ObjectFate::LeftOut, 1},
                              {"s", ObjectFate::Written, 0, false, "q"}}),
              (Sentences{"left out", "reached through the shortcut \"Again\" (s), under whose name "
                                     "it is written; the target is not tested"}));
}

TEST(TreeStory, TellsEachWayToAnObjectAndTheSameSentenceOnce) {
    EXPECT_EQ(treatment("f", {{"n"},
                              {"f", ObjectFate::Written, 0},
                              {"n"},
                              {"f", ObjectFate::Written, 2},
                              {"f", ObjectFate::LeftOut, 2}}),
              (Sentences{"written in the namespace \"Sales\" (n)", "left out"}));
}

TEST(TreeStory, TellsWhyAnObjectIsInNoTree) {
    EXPECT_EQ(treatment("d", {{"n"}}), Sentences{"in no tree: it stands in no namespace"});
    EXPECT_EQ(treatment("f2", {{"n"}}),
              Sentences{"in no tree: none can start at the namespace \"Sales\" (n2)"});
    EXPECT_EQ(treatment("i", {{"n"}}), Sentences{"in no tree: what it stands in is not gone into"});
}

TEST(TreeStory, FindsTheEntriesOfAnObjectInOrder) {
    vex::AnsweredTree const tree = vex::treeOf(
        *toldModel(), {{"n"}, {"f", ObjectFate::Written, 0}, {"n"}, {"f", ObjectFate::LeftOut, 2}});
    vex::TreeStory const story(toldModel()->defaultLocale(), tree);
    EXPECT_EQ(story.entriesOf(toldModel()->findById("f")), (std::vector<std::size_t>{1, 3}));
    EXPECT_EQ(story.entriesOf(toldModel()->findById("d")), std::vector<std::size_t>{});
}

TEST(TreeStory, TellsOfWaysThatLeadToWhatWasGoneIntoBefore) {
    vex::AnsweredTree tree = vex::treeOf(*toldModel(), {{"n"},
                                                        {"s", ObjectFate::Written, 0, false, "q"},
                                                        {"i", ObjectFate::Written, 1, true},
                                                        {"s", ObjectFate::Written, 0, false, "q"}});
    tree[3].members = vex::MembersMet::Elsewhere;
    auto const sentences = vex::TreeStory(toldModel()->defaultLocale(), tree)
                               .treatmentOf(toldModel()->findById("i"), false);
    ASSERT_EQ(sentences.size(), 2U);
    EXPECT_EQ(sentences[1], "and through 1 more, which lead to what was gone into before: the "
                            "first is the shortcut \"Again\" (s)");
}

} // namespace
