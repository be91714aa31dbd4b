#include "tests/host/store/image/ModelProbe.h"

#include <gtest/gtest.h>

namespace {

using Probe = ModelProbe;

std::string repeated(std::string const& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

TEST(ModelHostile, SiblingsWithoutNamesAllHaveOneReferenceThatTheFirstAnswersTo) {
    Probe const probe("<model><namespace name='N'><a id='first'/>" + repeated("<a/>", 300'000) +
                      "</namespace></model>");
    EXPECT_EQ(probe.reference("[N].[]"), probe.id("first"));
    EXPECT_EQ(Probe::children(Probe::children(probe.root())[0]).size(), 300'001U);
}

TEST(ModelHostile, ManyClassesAmongManySiblingsAreListedOnceEach) {
    std::string text = "<model>";
    for (int i = 0; i < 200'000; ++i) {
        text += "<c" + std::to_string(i % 9'000) + "/>";
    }
    Probe const probe(text + "</model>");
    EXPECT_EQ(Probe::properties(probe.root()).size(), 9'000U);
    EXPECT_EQ(Probe::children(Probe::property(probe.root(), "c8999")).size(), 22U);
}

TEST(ModelHostile, FoldersToTheFullDepthAreWalkedUpAndDown) {
    int const folders = 510;
    Probe const probe("<model><namespace name='N'>" + repeated("<folder name='F'>", folders - 1) +
                      "<filter id='x' name='X'/>" + repeated("</folder>", folders - 1) +
                      "</namespace></model>");
    EXPECT_EQ(probe.reference("[N].[X]"), probe.id("x"));
    int depth = 0;
    for (VEX_HANDLE at = probe.id("x"); at.IsNotNull(); at = VexObject(at).GetParent()) {
        ++depth;
    }
    EXPECT_EQ(depth, 512);
}

TEST(ModelHostile, AVeryLongTextComesBackWhole) {
    std::string const name(100'000, 'x');
    Probe const probe("<model><a id='" + name + "' name='" + name + "'>" + name + "</a></model>");
    VEX_HANDLE const element = probe.id(name.c_str());
    EXPECT_EQ(Probe::text(element), name);
    EXPECT_EQ(Probe::value(element, "name"), name);
}

TEST(ModelHostile, AnElementWithMoreValuesThanAnyOtherAndNeighboursWithNoneKeepsItsOwners) {
    std::string text = "<model><a/><a/>" + repeated("<b>", 100) + "<c id='c'>";
    for (int i = 0; i < 5'000; ++i) {
        text += "<property name='p" + std::to_string(i) + "'>v</property>";
    }
    text += "</c>" + repeated("</b>", 100) + repeated("<a/>", 1'000) + "<d id='d' x='1'/></model>";
    Probe const probe(text);
    for (VEX_HANDLE const property : Probe::properties(probe.id("c"))) {
        ASSERT_EQ(VexObject(property).GetParent(), probe.id("c"));
    }
    EXPECT_EQ(VexObject(Probe::property(probe.id("d"), "x")).GetParent(), probe.id("d"));
}

TEST(ModelHostile, EveryElementMayHaveItsOwnListOfProperties) {
    std::string text = "<model>";
    for (int i = 0; i < 20'000; ++i) {
        std::string const number = std::to_string(i);
        text +=
            "<a id='" + number + "'><property name='p" + number + "'>" + number + "</property></a>";
    }
    Probe const probe(text + "</model>");
    EXPECT_EQ(Probe::value(probe.id("19999"), "p19999"), "19999");
    EXPECT_EQ(Probe::value(probe.id("19999"), "p19998"), "(none)");
}

} // namespace
