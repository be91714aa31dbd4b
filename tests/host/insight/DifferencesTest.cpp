#include "host/insight/Differences.h"

#include "host/import/xml/ModelLoader.h"
#include "tests/host/insight/HandMadeTree.h"

#include <gtest/gtest.h>

namespace {

using vex::ObjectFate;
using vex::Presence;
using Change = vex::ComparedObject::Change;

std::shared_ptr<vex::Model const> modelWith(std::string const& members) {
    return vex::loadModelText("<model id=\"m\" defaultLocale=\"en\"><namespace id=\"n\" "
                              "name=\"Sales\">" +
                                  members + "</namespace></model>",
                              "m.model.xml");
}

vex::Differences tell(vex::Model const& before, std::vector<vex::MetObject> const& metBefore,
                      vex::Model const& after, std::vector<vex::MetObject> const& metAfter) {
    vex::AnsweredTree const first = vex::treeOf(before, metBefore);
    vex::AnsweredTree const second = vex::treeOf(after, metAfter);
    return vex::tellDifferences({before, before.defaultLocale(), first},
                                {after, after.defaultLocale(), second});
}

TEST(Differences, AreNoneBetweenTheSame) {
    auto const model = modelWith("");
    vex::Differences const told = tell(*model, {{"n"}}, *model, {{"n"}});
    EXPECT_EQ(told.appear + told.disappear + told.change + told.renamed, 0U);
    EXPECT_TRUE(told.objects.empty());
}

TEST(Differences, AreCountedAndToldInTheOrderOfTheTree) {
    auto const before = modelWith(R"(<folder id="a" name="A"/><folder id="b" name="B"/>
      <folder id="c" name="C" note="1"/>)");
    auto const after = modelWith(R"(<folder id="b" name="B2"/><folder id="c" name="C" note="2"/>
      <folder id="d" name="D"/>)");
    vex::Differences const told = tell(*before,
                                       {{"n"},
                                        {"a", ObjectFate::Written, 0},
                                        {"b", ObjectFate::Written, 0},
                                        {"c", ObjectFate::Written, 0}},
                                       *after,
                                       {{"n"},
                                        {"b", ObjectFate::Written, 0},
                                        {"c", ObjectFate::Written, 0},
                                        {"d", ObjectFate::Written, 0}});
    EXPECT_EQ(told.appear, 1U);
    EXPECT_EQ(told.disappear, 1U);
    EXPECT_EQ(told.change, 2U);
    EXPECT_EQ(told.renamed, 1U);
    std::vector<std::string> ids;
    for (vex::ToldChange const& each : told.objects) {
        ids.push_back(each.object.id);
    }
    EXPECT_EQ(ids, (std::vector<std::string>{"m", "n", "b", "c", "d", "a"}));
    EXPECT_EQ(told.objects[0].container, vex::ToldChange::NoContainer);
    EXPECT_EQ(told.objects[5].container, 1U);
    EXPECT_EQ(told.objects[1].change, Change::None);
    EXPECT_TRUE(told.objects[2].isRenamed);
    ASSERT_EQ(told.objects[3].properties.size(), 1U);
    EXPECT_EQ(told.objects[3].properties[0].property, "note");
    EXPECT_EQ(told.objects[3].properties[0].before, "1");
    EXPECT_EQ(told.objects[3].properties[0].after, "2");
}

TEST(Differences, KnowAnObjectAsTheSecondSideDoesUnlessItHasGone) {
    auto const before = modelWith(R"(<folder id="a" name="Old"/><folder id="b" name="Old B"/>)");
    auto const after = modelWith(R"(<folder id="a" name="New"/><folder id="b" name="New B"/>)");
    vex::Differences const told =
        tell(*before, {{"n"}, {"a", ObjectFate::Written, 0}, {"b", ObjectFate::Written, 0}}, *after,
             {{"n"}, {"a", ObjectFate::Written, 0}});
    ASSERT_EQ(told.objects.size(), 4U);
    EXPECT_EQ(told.objects[2].object.name, "New");
    EXPECT_EQ(told.objects[2].object.reference, "[Sales].[New]");
    EXPECT_EQ(told.objects[3].object.name, "Old B");
    EXPECT_EQ(told.objects[3].object.reference, "[Sales].[Old B]");
    EXPECT_EQ(told.objects[3].before, Presence::InItsPlace);
    EXPECT_EQ(told.objects[3].after, Presence::None);
}

} // namespace
