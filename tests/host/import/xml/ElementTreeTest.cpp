#include "host/import/xml/ElementTree.h"

#include "KRLException.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using vex::ElementTree;

ElementTree treeOf(std::string const& xml, vex::ElementLimits const& limits = {}) {
    vex::MemorySource source(xml);
    return vex::readElementTree(source, "e.xml", limits);
}

std::string problemOf(std::string const& xml, vex::ElementLimits const& limits = {}) {
    try {
        treeOf(xml, limits);
    } catch (KRLDocumentException const& problem) {
        return problem.what();
    }
    return "";
}

TEST(ElementTree, HoldsElementsAttributesAndTextWithTheirPlaces) {
    ElementTree const tree = treeOf("<a x='1' y='&lt;ä'>one<b/>\n<c>in</c>two</a>");
    EXPECT_EQ(tree.size(), 3U);
    EXPECT_EQ(tree.nameOf(ElementTree::Root), "a");
    EXPECT_EQ(tree.textOf(ElementTree::Root), "one\ntwo");
    EXPECT_EQ(tree.find(ElementTree::Root, "y"), "<ä");
    EXPECT_EQ(tree.find(ElementTree::Root, "z"), std::nullopt);
    auto const b = tree.first(ElementTree::Root);
    auto const c = tree.next(b);
    EXPECT_EQ(tree.nameOf(b), "b");
    EXPECT_EQ(tree.textOf(c), "in");
    EXPECT_EQ(tree.positionOf(c).line, 2U);
    EXPECT_EQ(tree.next(c), ElementTree::None);
    EXPECT_EQ(tree.first(b), ElementTree::None);
}

TEST(ElementTree, KnowsTheNamespacesOfElementsWhereTheyAreDeclared) {
    ElementTree const tree = treeOf("<p:a xmlns:p='urn:1' xmlns='urn:2'><b/><b xmlns='' "
                                    "xmlns:p='urn:3'><p:c/></b><p:d/></p:a>");
    auto const first = tree.first(ElementTree::Root);
    auto const second = tree.next(first);
    EXPECT_EQ(tree.spaceOf(ElementTree::Root), "urn:1");
    EXPECT_EQ(tree.spaceOf(first), "urn:2");
    EXPECT_EQ(tree.spaceOf(second), "");
    EXPECT_EQ(tree.spaceOf(tree.first(second)), "urn:3");
    EXPECT_EQ(tree.spaceOf(tree.next(second)), "urn:1");
    EXPECT_EQ(tree.attributeCount(ElementTree::Root), 0U);
}

TEST(ElementTree, EndsAtItsLimits) {
    EXPECT_THAT(problemOf("<a><a><a/></a></a>", {.depth = 2}),
                HasSubstr("e.xml:1:11: elements are nested more than 2 deep"));
    EXPECT_THAT(problemOf("<a b='1'>c</a>", {.values = 2}), HasSubstr("more than 2 elements"));
    EXPECT_THAT(problemOf("<a b='1' c='2'/>", {.attributesPerElement = 1}),
                HasSubstr("more than the 1 allowed"));
    std::string spaces = "<a";
    for (int number = 0; number < 101; ++number) {
        spaces += " xmlns:p" + std::to_string(number) + "='urn:" + std::to_string(number) + "'";
    }
    EXPECT_THAT(problemOf(spaces + "/>"), HasSubstr("more than 100 XML namespaces"));
}

TEST(ElementTree, RefusesWhatCannotBeReadWhereItStands) {
    EXPECT_THAT(problemOf("<a>\n<p:b/></a>"), HasSubstr("e.xml:2:7: no xmlns:..."));
    EXPECT_THAT(problemOf("<a>"), HasSubstr("not well-formed"));
    EXPECT_THAT(problemOf("<!DOCTYPE a><a/>"), HasSubstr("remove the DOCTYPE"));
    EXPECT_THAT(problemOf(""), HasSubstr("e.xml:1:1"));
}

} // namespace
