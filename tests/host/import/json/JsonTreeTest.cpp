#include "host/import/json/JsonTree.h"

#include "host/import/draft/ImportWork.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using vex::SourceTree;

class JsonTree : public testing::Test {
protected:
    SourceTree read(std::string_view json, vex::ImportLimits const& limits = {}) {
        m_work.emplace(vex::ImportRequest{.source = "s.json", .name = "s", .limits = limits});
        return vex::readJsonTree(json, *m_work);
    }
    std::string refusal(std::string_view json, vex::ImportLimits const& limits = {}) {
        EXPECT_THROW(read(json, limits), vex::SourceReport::Stop);
        return m_work->found.empty() ? "" : toString(m_work->found.front());
    }

private:
    std::optional<vex::ImportWork> m_work;
};

TEST_F(JsonTree, HoldsValuesInTheOrderOfTheText) {
    SourceTree const tree = read(R"({"a":[1,"x\"y",true,null,-2.5],"b":{}})");
    auto const list = tree.find(0, "a");
    ASSERT_EQ(tree.kind(list), SourceTree::Kind::List);
    std::string texts;
    for (auto each = tree.first(list); each != SourceTree::None; each = tree.next(each)) {
        texts += std::string(tree.textOf(each)) + '|';
    }
    EXPECT_EQ(texts, "1|x\"y|true||-2.5|");
    EXPECT_EQ(tree.kind(tree.find(0, "b")), SourceTree::Kind::Map);
    EXPECT_EQ(tree.find(0, "c"), SourceTree::None);
}

TEST_F(JsonTree, KnowsWhereEachTextBegins) {
    SourceTree const tree = read("{\n  \"a\": [\n\"grün\\\\\", \"\\\"x\"]\n}");
    auto const list = tree.find(0, "a");
    auto const first = tree.first(list);
    EXPECT_EQ(tree.positionOf(first).line, 3U);
    EXPECT_EQ(tree.positionOf(first).column, 1U);
    EXPECT_EQ(tree.positionOf(tree.next(first)).line, 3U);
    EXPECT_EQ(tree.positionOf(tree.next(first)).column, 11U);
    EXPECT_EQ(tree.positionOf(list).line, 2U);
    EXPECT_EQ(tree.positionOf(list).column, 8U);
}

TEST_F(JsonTree, PassesOverAByteOrderMark) {
    EXPECT_EQ(read("\xEF\xBB\xBF{}").kind(0), SourceTree::Kind::Map);
}

TEST_F(JsonTree, RefusesWhatIsNoJsonWhereItIsNone) {
    EXPECT_THAT(refusal("{\n \"a\": tru }"), HasSubstr("s.json:2:"));
    EXPECT_THAT(refusal("{\n \"a\": tru }"), HasSubstr("this is not JSON"));
    EXPECT_THAT(refusal(""), HasSubstr("s.json:1:1"));
    EXPECT_THAT(refusal("{} x"), HasSubstr("s.json:1:4"));
    EXPECT_THAT(refusal("\"\xff\""), HasSubstr("s.json:1:"));
    EXPECT_THAT(refusal("[1e999]"), HasSubstr("s.json:1:"));
}

TEST_F(JsonTree, RefusesAKeyThatStandsTwice) {
    EXPECT_THAT(refusal("{\"a\":1,\n\"b\":2,\n\"a\":3}"), HasSubstr("the key \"a\" stands twice"));
    EXPECT_THAT(refusal("{\"a\":1,\n\"\\u0061\":3}"), HasSubstr("s.json:2:"));
}

TEST_F(JsonTree, EndsAtItsLimits) {
    vex::ImportLimits limits;
    limits.sourceDepth = 2;
    EXPECT_EQ(read("[[1]]", limits).size(), 3U);
    EXPECT_THAT(refusal("[\n[[1]]]", limits), HasSubstr("s.json:2:2: error: values are nested"));
    limits.sourceValues = 3;
    EXPECT_EQ(read("[1,2]", limits).size(), 3U);
    EXPECT_THAT(refusal("[1,2,3]", limits), HasSubstr("more than 3 values"));
}

TEST_F(JsonTree, GoesAsDeepAsTheTextUntilTheLimit) {
    EXPECT_THAT(refusal(std::string(1'000'000, '[')), HasSubstr("nested more than 256 deep"));
}

} // namespace
