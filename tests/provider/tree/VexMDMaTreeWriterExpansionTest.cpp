// How far shortcuts are expanded, and what is handed through them.

#include "tests/provider/ProviderScene.h"
#include "tests/support/Casts.h"

#include <gtest/gtest.h>

namespace {

constexpr char Names[] = "<Property a='*/@name'/><Property a='*/querySubject'/>"
                         "<Property a='*/queryItem'/></Metadata>";

std::string names(std::string const& model, std::string const& options = "") {
    ProviderScene scene(model);
    return scene.ask("<Metadata " + options + ">" + Names);
}

constexpr char Loop[] =
    R"(<model><namespace name="Sales"><shortcut name="Loop" refobj="[Sales]"/></namespace></model>)";

constexpr char Mutual[] = R"(<model><namespace name="Root">
    <namespace name="A"><shortcut name="toB" refobj="[B]"/></namespace>
    <namespace name="B"><shortcut name="toA" refobj="[A]"/></namespace></namespace></model>)";

TEST(ShortcutExpansion, EndsWhereAShortcutIsMetInsideItself) {
    EXPECT_EQ(names(Loop), R"(<folder name="Sales"><folder name="Loop"><folder name="Loop"/>)"
                           R"(</folder></folder>)");
}

TEST(ShortcutExpansion, EndsInARingOfShortcuts) {
    EXPECT_EQ(names(Mutual, "start_at='[A]'"),
              R"(<folder name="A"><folder name="toB"><folder name="toA"><folder name="toB"/>)"
              R"(</folder></folder></folder>)");
}

TEST(ShortcutExpansion, EndsForAShortcutThatStandsForItself) {
    EXPECT_EQ(names(R"(<model><namespace name="N"><shortcut name="S" refobj="[N].[S]"/>
                       </namespace></model>)"),
              R"(<folder name="N"><shortcut name="S"/></folder>)");
}

TEST(ShortcutExpansion, IsNotCutForTheSameShortcutMetBesideItself) {
    EXPECT_EQ(names(R"(<model><namespace name="N">
                <querySubject name="Q"><queryItem name="I"/></querySubject>
                <querySubject name="P"><shortcut name="S" refobj="[N].[Q]"/></querySubject>
                <shortcut name="One" refobj="[N].[P]"/><shortcut name="Two" refobj="[N].[P]"/>
                </namespace></model>)"),
              R"(<folder name="N"><querySubject name="Q"><queryItem name="I"/></querySubject>)"
              R"(<querySubject name="P"><querySubject name="S"><queryItem name="I"/>)"
              R"(</querySubject></querySubject>)"
              R"(<querySubject name="One"><querySubject name="S"><queryItem name="I"/>)"
              R"(</querySubject></querySubject>)"
              R"(<querySubject name="Two"><querySubject name="S"><queryItem name="I"/>)"
              R"(</querySubject></querySubject></folder>)");
}

TEST(ShortcutExpansion, IsLeftToTheDepthWhenThereIsOne) {
    EXPECT_EQ(
        names(Loop, "Depth='4'"),
        R"(<folder name="Sales"><folder name="Loop"><folder name="Loop"><folder name="Loop"/>)"
        R"(</folder></folder></folder>)");
}

TEST(ShortcutExpansion, GoesAsDeepAsTheLastLevel) {
    std::string expected = R"(<folder name="Loop"/>)";
    for (int level = 1023; level >= 2; --level) {
        expected = R"(<folder name="Loop">)" + expected + "</folder>";
    }
    EXPECT_EQ(names(Loop, "Depth='1024'"), R"(<folder name="Sales">)" + expected + "</folder>");
}

TEST(ShortcutExpansion, IsRefusedPastTheLastLevel) {
    ProviderScene scene(Loop);
    for (char const* const depth : {"1025", "2147483647"}) {
        scene.expectRefused(std::string("<Metadata Depth='") + depth + "'>" + Names, 1444379514, 0,
                            "VexMDMaProvider::GetRequestedElementTreeAtLevel", {"[Sales].[Loop]"});
    }
}

TEST(ShortcutExpansion, WritesMembersByDepth) {
    EXPECT_EQ(names(casts::shop(), "Depth='2'"),
              R"(<folder name="Sales"><querySubject name="Orders"/><querySubject name="Again"/>)"
              R"(</folder>)");
    std::string const whole = R"(<querySubject name="Again"><queryItem name="Quantity"/>)"
                              R"(</querySubject>)";
    EXPECT_EQ(names(casts::shop(), "start_at='[Sales].[Again]' Depth='2'"), whole);
    EXPECT_EQ(names(casts::shop(), "start_at='[Sales].[Again]' Depth='0'"), whole);
    EXPECT_EQ(names(casts::shop(), "start_at='[Sales].[Again]' Depth='1'"),
              R"(<querySubject name="Again"/>)");
    EXPECT_EQ(names(casts::shop(), "start_at='[Sales].[Again]' Depth='-1'"),
              R"(<querySubject name="Again"/>)");
}

TEST(ShortcutExpansion, IsNotNeededForAModelAsDeepAsModelsGet) {
    std::string model;
    std::string expected = R"(<folder name="f"/>)";
    constexpr int Folders = 510;
    for (int level = 0; level < Folders; ++level) {
        model += R"(<folder name="f">)";
        expected = level == 0 ? expected : R"(<folder name="f">)" + expected + "</folder>";
    }
    for (int level = 0; level < Folders; ++level) {
        model += "</folder>";
    }
    ProviderScene scene(R"(<model><namespace name="Sales">)" + model + "</namespace></model>");
    EXPECT_EQ(scene.ask("<Metadata><Property a='*/@name'/><Property a='*/folder'/></Metadata>"),
              R"(<folder name="Sales">)" + expected + "</folder>");
}

class ShortcutElement : public testing::Test {
protected:
    std::string write(int depth, int level, char const* parentPath, VexMDMaPath const& path,
                      bool atStart, char const* properties = "") {
        RequestParts parts(scene, std::string("<Metadata>") + properties + Names);
        KRLIDOM_Node const element = scene.provider.processShortCut(
            parts.helper, scene.model.byId("s"), parentPath, path, depth, level, parts.locale,
            parts.engine, parts.visibility, false, atStart);
        EXPECT_EQ(parts.response.resultText(), ""); // its caller appends it
        return sortedText(element);
    }

    ProviderScene scene{casts::shop()};
    VexMDMaPath const inSales{{"Sales", "namespace"}};
};

TEST_F(ShortcutElement, HasMembersUntilTheLevelReachesTheDepth) {
    std::string const alone = R"(<querySubject name="Again"/>)";
    std::string const whole =
        R"(<querySubject name="Again"><queryItem name="Quantity"/></querySubject>)";
    EXPECT_EQ(write(2, 2, "", inSales, false), alone);
    EXPECT_EQ(write(2, 3, "", inSales, false), alone);
    EXPECT_EQ(write(2, 1, "", inSales, false), whole);
    EXPECT_EQ(write(0, 9, "", inSales, false), whole);
}

TEST_F(ShortcutElement, BeginsItsPathWithADotUnderAnEmptyPath) {
    char const* const path = "<Property a='./@_path'/>";
    EXPECT_EQ(write(2, 2, "", inSales, false, path),
              R"(<querySubject _path=".[Again]" name="Again"/>)");
    EXPECT_EQ(write(2, 2, "x", inSales, false, path),
              R"(<querySubject _path="x.[Again]" name="Again"/>)");
    EXPECT_EQ(write(2, 2, "x", inSales, true, path), R"(<querySubject _path="x" name="Again"/>)");
}

TEST_F(ShortcutElement, HasAtTheStartTheReferenceOfItsContainer) {
    char const* const reference = "<Property a='./@_ref'/>";
    VexMDMaPath const inSubject{{"Orders", "querySubject"}, {"Other", "namespace"}};
    EXPECT_EQ(write(2, 2, "", inSubject, true, reference),
              R"(<querySubject _ref="[Other].[Orders]" name="Again"/>)");
    EXPECT_EQ(write(2, 2, "", inSubject, false, reference),
              R"(<querySubject _ref="[Sales]" name="Again"/>)");
    EXPECT_EQ(write(2, 2, "", {}, true, reference), R"(<querySubject _ref="" name="Again"/>)");
}

TEST_F(ShortcutElement, IsNullWhenItIsNotWritten) {
    RequestParts parts(scene, std::string("<Metadata>") + Names);
    EXPECT_TRUE(scene.provider
                    .processShortCut(parts.helper, VEX_HANDLE(), "", inSales, 0, 1, parts.locale,
                                     parts.engine, parts.visibility, false, false)
                    .isNull());
}

} // namespace
