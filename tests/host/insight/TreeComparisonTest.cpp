#include "host/insight/TreeComparison.h"

#include "KRLException.h"
#include "host/import/xml/ModelLoader.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/Budget.h"
#include "tests/host/insight/HandMadeTree.h"

#include <gtest/gtest.h>

namespace {

using vex::ComparedObject;
using vex::MetObject;
using vex::ObjectFate;
using vex::Presence;
using Change = ComparedObject::Change;

std::shared_ptr<vex::Model const> modelOf(std::string const& members) {
    return vex::loadModelText("<model id=\"m\" defaultLocale=\"en\"><locales><locale>en</locale>"
                              "<locale>de</locale></locales>" +
                                  members + "</model>",
                              "m.model.xml");
}

std::shared_ptr<vex::Model const> const& sales() {
    static auto const loaded = modelOf(R"(<namespace id="n" name="Sales">
      <querySubject id="q" name="Orders"><queryItem id="i" name="Total"/></querySubject>
      <folder id="f" name="Facts"/></namespace>)");
    return loaded;
}

/// "sign id" of each entry, below its container's.
std::vector<std::string> drawn(std::vector<ComparedObject> const& objects) {
    constexpr char const* signs[] = {"", "+", "-", "~"};
    std::vector<std::string> lines;
    std::vector<std::string> indents;
    for (ComparedObject const& each : objects) {
        indents.push_back(
            each.container == ComparedObject::NoContainer ? "" : indents[each.container] + ' ');
        VEX_HANDLE const handle = each.after.IsNotNull() ? each.after : each.before;
        lines.push_back(indents.back() + signs[static_cast<int>(each.change)] +
                        vex::idOf(handle).toUtf8());
    }
    return lines;
}

/// What changes on one model between two trees.
std::vector<ComparedObject> onSales(std::vector<MetObject> const& before,
                                    std::vector<MetObject> const& after) {
    vex::AnsweredTree const first = vex::treeOf(*sales(), before);
    vex::AnsweredTree const second = vex::treeOf(*sales(), after);
    I18NLocale const& locale = sales()->defaultLocale();
    return vex::compareTrees({*sales(), locale, first}, {*sales(), locale, second});
}

/// What changes between two models that are shown whole, all but their roots.
std::vector<ComparedObject> between(vex::Model const& before, vex::Model const& after) {
    auto const whole = [](vex::Model const& model) {
        vex::AnsweredTree tree;
        for (std::size_t number = 1; number < model.elementCount(); ++number) {
            tree.emplace_back().object = model.getElement(number);
        }
        return tree;
    };
    vex::AnsweredTree const first = whole(before);
    vex::AnsweredTree const second = whole(after);
    return vex::compareTrees({before, before.defaultLocale(), first},
                             {after, after.defaultLocale(), second});
}

/// "property: before -> after" of each.
std::vector<std::string> changesOf(ComparedObject const& object) {
    std::vector<std::string> lines;
    for (vex::PropertyChange const& each : object.properties) {
        lines.push_back(each.property.toUtf8() + ": " + each.before.toUtf8() + " -> " +
                        each.after.toUtf8());
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(TreeComparison, IsChargedToTheCall) {
    {
        vex::Budget const call({.steps = 4});
        EXPECT_THROW(onSales({{"n"}}, {{"n"}}), KRLLimitException);
    }
    vex::Budget const call({.bytes = 100});
    EXPECT_THROW(onSales({{"n"}}, {{"n"}}), KRLLimitException);
}

TEST(TreeComparison, FindsNothingBetweenTheSame) {
    EXPECT_EQ(drawn(onSales({{"n"}, {"q", ObjectFate::Written, 0}},
                            {{"n"}, {"q", ObjectFate::Written, 0}})),
              Lines{});
}

TEST(TreeComparison, ListsWhatDiffersWithAllThatItStandsIn) {
    EXPECT_EQ(drawn(onSales({{"n"}, {"i", ObjectFate::Written, 0}}, {{"n"}})),
              (Lines{"m", " n", "  q", "   -i"}));
    EXPECT_EQ(drawn(onSales({{"n"}}, {{"n"}, {"f", ObjectFate::Written, 0}})),
              (Lines{"m", " n", "  +f"}));
}

TEST(TreeComparison, TakesWhatIsLeftOutAsNotShown) {
    EXPECT_EQ(drawn(onSales({{"n"}, {"f", ObjectFate::Written, 0}},
                            {{"n"}, {"f", ObjectFate::LeftOut, 0}})),
              (Lines{"m", " n", "  -f"}));
}

TEST(TreeComparison, TellsAnObjectInItsPlaceFromOneBehindShortcuts) {
    std::vector<MetObject> const inPlace{{"n"}, {"i", ObjectFate::Written, 0}};
    std::vector<MetObject> const behind{{"n"}, {"i", ObjectFate::Written, 0, true}};
    std::vector<ComparedObject> const found = onSales(inPlace, behind);
    EXPECT_EQ(drawn(found), (Lines{"m", " n", "  q", "   -i"}));
    EXPECT_EQ(found[3].presenceBefore, Presence::InItsPlace);
    EXPECT_EQ(found[3].presenceAfter, Presence::BehindShortcuts);
    EXPECT_EQ(drawn(onSales(behind, inPlace)), (Lines{"m", " n", "  q", "   +i"}));
    EXPECT_EQ(drawn(onSales({{"n"}}, behind)), (Lines{"m", " n", "  q", "   +i"}));
}

TEST(TreeComparison, CountsAnObjectInItsPlaceWhateverElseShowsIt) {
    EXPECT_EQ(
        drawn(onSales({{"n"}, {"i", ObjectFate::Written, 0}},
                      {{"n"}, {"i", ObjectFate::Written, 0}, {"i", ObjectFate::Written, 0, true}})),
        Lines{});
}

TEST(TreeComparison, FindsAnObjectOfAnotherModelByItsIdThenByItsReference) {
    auto const before = modelOf(R"(<namespace id="n" name="Sales">
      <folder id="a" name="One"/><folder id="b" name="Two"/><folder name="Three"/></namespace>)");
    auto const after = modelOf(R"(<namespace id="n" name="Sales">
      <folder id="a" name="Two"/><folder id="c" name="Two"/><folder name="Three"/></namespace>)");
    std::vector<ComparedObject> const found = between(*before, *after);
    EXPECT_EQ(drawn(found), (Lines{"m", " n", "  ~a", "  ~c"}));
    EXPECT_EQ(changesOf(found[2]), Lines{"name: One -> Two"});
    EXPECT_EQ(changesOf(found[3]), Lines{"ID: b -> c"});
}

TEST(TreeComparison, TellsTheNewIdOfAnObjectThatItsReferenceFound) {
    auto const before = modelOf(R"(<namespace id="n" name="Sales"><folder id="a" name="One"/>
      </namespace>)");
    auto const after = modelOf(R"(<namespace id="n" name="Sales"><folder id="b" name="One"/>
      </namespace>)");
    std::vector<ComparedObject> const found = between(*before, *after);
    EXPECT_EQ(drawn(found), (Lines{"m", " n", "  ~b"}));
    EXPECT_EQ(changesOf(found[2]), Lines{"ID: a -> b"});
    EXPECT_FALSE(found[2].isRenamed());
}

TEST(TreeComparison, TellsClassPropertiesAndContainerThatChange) {
    auto const before = modelOf(R"(<namespace id="n" name="Sales">
      <folder id="f" name="Facts"/><folder id="x" name="X" note="old" gone="1"/></namespace>)");
    auto const after = modelOf(R"(<namespace id="n" name="Sales">
      <folder id="f" name="Facts"><filter id="x" name="Y" note="new" more="2"/></folder>
      </namespace>)");
    std::vector<ComparedObject> const found = between(*before, *after);
    EXPECT_EQ(drawn(found), (Lines{"m", " n", "  f", "   ~x"}));
    EXPECT_EQ(changesOf(found[3]),
              (Lines{"class: folder -> filter", "name: X -> Y", "note: old -> new", "gone: 1 -> ",
                     "more:  -> 2", "container: n -> f"}));
    EXPECT_TRUE(found[3].isRenamed());
}

TEST(TreeComparison, ComparesNamesInEachSidesLanguage) {
    auto const model = modelOf(R"(<namespace id="n" name="Sales"><folder id="f">
      <property name="name" locale="en">Facts</property>
      <property name="name" locale="de">Fakten</property></folder></namespace>)");
    I18NLocale const german("de");
    vex::AnsweredTree const tree = vex::treeOf(*model, {{"n"}, {"f", ObjectFate::Written, 0}});
    std::vector<ComparedObject> const found =
        vex::compareTrees({*model, model->defaultLocale(), tree}, {*model, german, tree});
    EXPECT_EQ(drawn(found), (Lines{"m", " n", "  ~f"}));
    EXPECT_EQ(changesOf(found[2]), Lines{"name: Facts -> Fakten"});
}

TEST(TreeComparison, PutsWhatOnlyTheFirstModelHasBehindItsSiblings) {
    auto const before = modelOf(R"(<namespace id="n" name="Sales">
      <folder id="old" name="Old"><filter id="inner" name="Inner"/></folder>
      <folder id="kept" name="Kept"/></namespace>)");
    auto const after = modelOf(R"(<namespace id="n" name="Sales">
      <folder id="kept" name="Kept 2"/></namespace>)");
    EXPECT_EQ(drawn(between(*before, *after)),
              (Lines{"m", " n", "  ~kept", "  -old", "   -inner"}));
}

} // namespace
