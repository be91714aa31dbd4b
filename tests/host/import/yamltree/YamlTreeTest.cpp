#include "host/import/yamltree/YamlTree.h"

#include "host/import/draft/ImportWork.h"

#include <optional>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using vex::SourceTree;

class YamlTree : public testing::Test {
protected:
    SourceTree read(std::string_view yaml, vex::ImportLimits const& limits = {}) {
        m_work.emplace(vex::ImportRequest{.source = "s.yaml", .name = "s", .limits = limits});
        return vex::readYamlTree(yaml, *m_work);
    }
    std::string refusal(std::string_view yaml, vex::ImportLimits const& limits = {}) {
        EXPECT_THROW(read(yaml, limits), vex::SourceReport::Stop);
        return m_work->found.empty() ? "" : toString(m_work->found.front());
    }

    /// The tree in one line.
    std::string line(std::string_view yaml) {
        SourceTree const tree = read(yaml);
        return lineOf(tree, 0);
    }

private:
    static std::string lineOf(SourceTree const& tree, SourceTree::Value value) {
        bool const isMap = tree.kind(value) == SourceTree::Kind::Map;
        if (!isMap && tree.kind(value) != SourceTree::Kind::List) {
            return std::string(tree.textOf(value));
        }
        std::string text;
        for (auto each = tree.first(value); each != SourceTree::None; each = tree.next(each)) {
            text.append(text.empty() ? "" : ",");
            text.append(isMap ? std::string(tree.keyOf(each)) + ':' : "")
                .append(lineOf(tree, each));
        }
        return (isMap ? '{' : '[') + text + (isMap ? '}' : ']');
    }

    std::optional<vex::ImportWork> m_work;
};

TEST_F(YamlTree, HoldsValuesInTheOrderOfTheText) {
    EXPECT_EQ(line("a: [1, 'x y', true, ~]\nb: {}\nc: |\n  two\n  lines\nd:\n  - e: f\n    g:\n"),
              "{a:[1,x y,true,],b:{},c:two\nlines\n,d:[{e:f,g:}]}");
    EXPECT_EQ(line("just text"), "just text");
    EXPECT_TRUE(read("# nothing\n").isEmpty());
}

TEST_F(YamlTree, TellsTextsFromTruthsNumbersAndNothing) {
    SourceTree const tree = read("[true, 'true', -1.5, ~, '', word]");
    std::string kinds;
    for (auto each = tree.first(0); each != SourceTree::None; each = tree.next(each)) {
        kinds += "NSTLM"[static_cast<int>(tree.kind(each))];
    }
    EXPECT_EQ(kinds, "STSNTT");
}

TEST_F(YamlTree, KnowsWhereEachValueBegins) {
    SourceTree const tree = read("a:\n  - grün\n  - {b: c}\n");
    auto const first = tree.first(tree.find(0, "a"));
    EXPECT_EQ(tree.positionOf(first).line, 2U);
    EXPECT_EQ(tree.positionOf(first).column, 5U);
    auto const inner = tree.first(tree.next(first));
    EXPECT_EQ(tree.positionOf(inner).line, 3U);
    EXPECT_EQ(tree.positionOf(inner).column, 9U);
}

TEST_F(YamlTree, HasWhatAnAliasStandsForAsIfItWereWritten) {
    EXPECT_EQ(line("a: &x {b: [c, d]}\ne: *x\nf: [*x, *x]\n"),
              "{a:{b:[c,d]},e:{b:[c,d]},f:[{b:[c,d]},{b:[c,d]}]}");
    EXPECT_EQ(line("[&x a, &x b, *x]"), "[a,b,b]");
}

TEST_F(YamlTree, HasWhatIsMergedUnlessItSaysThatItself) {
    EXPECT_EQ(line("a: &x {b: 1, c: 2}\nd: {<<: *x, c: 3}\n"), "{a:{b:1,c:2},d:{c:3,b:1}}");
    EXPECT_EQ(line("a: &x {b: 1}\nc: &y {b: 2, d: 3}\ne:\n  <<: [*x, *y]\n  f: 4\n"),
              "{a:{b:1},c:{b:2,d:3},e:{f:4,b:1,d:3}}");
    EXPECT_EQ(line("{'<<': a}"), "{<<:a}");
}

TEST_F(YamlTree, TakesAKeyThatIsAMappingForTheTextThatItLooksLike) {
    SourceTree const tree = read("a: {{ b }}\nc: {{ d(e) }}\nf: g\n");
    EXPECT_EQ(line("a: {{ b }}\nc: x\n"), "{a:{{b}:},c:x}");
    EXPECT_TRUE(isTemplate(tree, tree.find(0, "a")));
    EXPECT_TRUE(isTemplate(tree, tree.find(0, "c")));
    EXPECT_FALSE(isTemplate(tree, tree.find(0, "f")));
    EXPECT_TRUE(holdsTemplate(tree, 0));
    EXPECT_TRUE(holdsTemplate(read("[[{a: 'x {% if y %}'}]]"), 0));
    EXPECT_FALSE(holdsTemplate(read("[[{a: '{b}'}]]"), 0));
}

TEST_F(YamlTree, RefusesWhatIsNoYamlWhereItIsNone) {
    EXPECT_THAT(refusal("a: b\nc: [d"), HasSubstr("s.yaml:3:1: error: this is not YAML"));
    EXPECT_THAT(refusal("a: b\n---\nc: d\n"), HasSubstr("s.yaml:2:1: error: a second document"));
    EXPECT_THAT(refusal("a:\n{% for b in c %}\n"), HasSubstr("templates, which are not run"));
    EXPECT_THAT(refusal("\"\xff\""), HasSubstr("this is not YAML"));
}

TEST_F(YamlTree, RefusesAKeyThatStandsTwice) {
    EXPECT_THAT(refusal("a: 1\nb: 2\na: 3\n"),
                HasSubstr("s.yaml:3:4: error: the key \"a\" stands twice in one mapping"));
    EXPECT_THAT(refusal("{a: 1, 'a': 2}"), HasSubstr("stands twice"));
}

TEST_F(YamlTree, RefusesAnAliasOfNothingOrOfWhatItStandsIn) {
    EXPECT_THAT(refusal("a: *b\n"), HasSubstr("s.yaml:1:4: error: nothing before has the anchor"));
    EXPECT_THAT(refusal("a: &b [*b]\n"), HasSubstr("s.yaml:1:8: error: the alias \"b\" stands in"));
    EXPECT_THAT(refusal("a: &b {<<: *b}\n"), HasSubstr("stands in what it stands for"));
    EXPECT_THAT(refusal("a: &b [c]\nd: {<<: *b}\n"), HasSubstr("aliases of mappings"));
    EXPECT_THAT(refusal("a: {<<: b}\n"), HasSubstr("takes an alias"));
    EXPECT_THAT(refusal("a: &b c\n*b : d\n"), HasSubstr("alias stands here for a key"));
}

TEST_F(YamlTree, EndsAtItsLimits) {
    vex::ImportLimits limits;
    limits.sourceDepth = 2;
    EXPECT_EQ(read("[[a]]", limits).size(), 3U);
    EXPECT_THAT(refusal("[\n[[a]]]", limits), HasSubstr("s.yaml:2:2: error: this is nested"));
    limits.sourceValues = 3;
    EXPECT_EQ(read("[a, b]", limits).size(), 3U);
    EXPECT_THAT(refusal("[a, b, c]", limits), HasSubstr("more than 3 values"));
}

TEST_F(YamlTree, CountsWhatAliasesStandFor) {
    vex::ImportLimits limits;
    limits.sourceDepth = 3;
    EXPECT_THAT(refusal("- &a [[b]]\n- [*a]\n", limits),
                HasSubstr("s.yaml:2:4: error: with what its aliases stand for this is nested"));
    limits.sourceBytes = 10;
    EXPECT_THAT(refusal("- &a aaaa\n- *a\n- *a\n", limits),
                HasSubstr("s.yaml:3:3: error: the source has more than 10 bytes"));
    limits.sourceValues = 6;
    EXPECT_THAT(refusal("- &a [b]\n- *a\n- *a\n", limits), HasSubstr("more than 6 values"));
}

TEST_F(YamlTree, EndsWhereAliasesMultiply) {
    std::string text = "- &l0 [a, a, a, a, a, a, a, a, a, a]\n";
    for (int level = 1; level < 10; ++level) {
        std::string const one = "*l" + std::to_string(level - 1);
        text += "- &l" + std::to_string(level) + " [" + one;
        for (int count = 1; count < 10; ++count) {
            text += ", " + one;
        }
        text += "]\n";
    }
    EXPECT_THAT(refusal(text), HasSubstr("more than 2000000 values, what aliases stand for"));
}

TEST_F(YamlTree, GoesAsDeepAsTheTextUntilTheLimit) {
    EXPECT_THAT(refusal(std::string(1'000'000, '[')), HasSubstr("nested more than 256 deep"));
}

TEST_F(YamlTree, SharesItsLimitsAmongTheTextsOfOneSource) {
    vex::ImportLimits limits;
    limits.sourceValues = 3;
    vex::ImportWork work({.source = "s", .name = "s", .limits = limits});
    vex::YamlUse use;
    vex::readYamlTree("[a]", work, use);
    EXPECT_THROW(vex::readYamlTree("[b]", work, use), vex::SourceReport::Stop);
}

} // namespace
