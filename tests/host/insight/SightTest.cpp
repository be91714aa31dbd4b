#include "host/insight/Sight.h"

#include "KRLException.h"
#include "host/import/xml/ModelLoader.h"
#include "host/protocol/JsonSight.h"
#include "host/store/image/Budget.h"
#include "tests/host/insight/HandMadeTree.h"

#include <gtest/gtest.h>

namespace {

using vex::Sight;

TEST(Sight, IsWhatTheCheckSaysAndWhatTreesShowBesides) {
    auto const model = vex::loadModelText(
        R"(<model id="m"><namespace id="n" name="N"><filter id="a"/><filter id="b"/></namespace>
           </model>)",
        "m.xml");
    vex::AnsweredTree const tree =
        vex::treeOf(*model, {{"n"}, {"a", vex::ObjectFate::Written, 0}, {"b"}});
    EXPECT_EQ(vex::sightOfAll(*model, {tree[0], tree[1]}, {false, true, false, false}),
              (std::vector<Sight>{Sight::NotSeen, Sight::Seen, Sight::PastViews, Sight::NotSeen}));
}

TEST(Sight, IsChargedToTheCall) {
    auto const model = vex::loadModelText("<model><namespace name='N'/></model>", "m.xml");
    {
        vex::Budget const call({.bytes = 1});
        EXPECT_THROW(vex::sightOfAll(*model, {}, {true, true}), KRLLimitException);
    }
    vex::Budget const call({.steps = 0});
    EXPECT_THROW(vex::sightOfAll(*model, {vex::AnsweredObject()}, {true, true}), KRLLimitException);
}

TEST(ObjectSight, PutsViewersTogetherOfWhomTheSameIsSaid) {
    vex::ObjectSight sight;
    sight.add({{"ann"}, false, Sight::Seen, "why", {}});
    sight.add({{"ben"}, false, Sight::NotSeen, "why", {}});
    sight.add({{"cid"}, false, Sight::Seen, "why", {}});
    sight.add({{"clerk"}, true, Sight::Seen, "why", {}});
    ASSERT_EQ(sight.viewers.size(), 3U);
    EXPECT_EQ(sight.viewers[0].names, (std::vector<std::string>{"ann", "cid"}));
}

TEST(ObjectSight, KeepsViewersApartOfWhomSomethingElseIsSaid) {
    vex::ObjectSight sight;
    sight.add({{"ann"}, false, Sight::PastViews, "why", {"in a tree"}});
    sight.add({{"ben"}, false, Sight::PastViews, "why", {"in another"}});
    sight.add({{"cid"}, false, Sight::PastViews, "why", {"in a tree", "in another"}});
    sight.add({{"dan"}, false, Sight::PastViews, "why not", {"in a tree"}});
    sight.add({{"eve"}, false, Sight::PastViews, "why", {"in another"}});
    ASSERT_EQ(sight.viewers.size(), 4U);
    EXPECT_EQ(sight.viewers[1].names, (std::vector<std::string>{"ben", "eve"}));
}

TEST(SightMatrix, IsQuotedWhereCommaSeparatedValuesNeedIt) {
    vex::SightMatrix matrix;
    matrix.columns = {{"ann, the clerk", {"bea"}, ""}};
    matrix.rows = {{{"i", "[N].[\"I\"]", "queryItem", "\"I\""}, {Sight::PastViews}}};
    EXPECT_EQ(vex::toCsv(matrix), "id,reference,class,name,\"ann, the clerk\",bea\r\n"
                                  "i,\"[N].[\"\"I\"\"]\",queryItem,\"\"\"I\"\"\",past-views,"
                                  "past-views\r\n");
}

} // namespace
