// Which objects a user's views leave in the tree.

#include "tests/provider/ProviderScene.h"

#include <gtest/gtest.h>

namespace {

std::string modelIncluding(std::initializer_list<char const*> ids) {
    std::string items;
    for (char const* const id : ids) {
        items += std::string("<item>") + id + "</item>";
    }
    return R"(<model id="m"><namespace id="n" name="Sales">
        <folder id="f" name="Facts"><folder id="ff" name="More">
          <querySubject id="q" name="Orders"><queryItem id="i" name="Quantity"/></querySubject>
        </folder></folder>
        <namespace id="inner" name="Inner"><querySubject id="q2" name="Staff"/></namespace>
        <querySubject name="No id"/>
        </namespace><securityViews><securityView id="v"><set kind="included">)" +
           items + "</set></securityView></securityViews></model>";
}

std::string treeFor(std::initializer_list<char const*> included, std::string const& options = "") {
    ProviderScene scene(modelIncluding(included), "/content/m");
    scene.session.setViews({"v"});
    return scene.ask("<Metadata " + options +
                     "><Property a='*/@name'/><Property a='*/folder'/>"
                     "<Property a='*/querySubject'/><Property a='*/queryItem'/></Metadata>");
}

TEST(ShownObjects, AreThoseThatTheViewsInclude) {
    EXPECT_EQ(treeFor({"n", "f", "ff", "q", "inner"}),
              R"(<folder name="Sales"><folder name="Facts"><folder name="More">)"
              R"(<querySubject name="Orders"/></folder></folder><folder name="Inner"/></folder>)");
}

TEST(ShownObjects, TakeThePlaceOfAContainerThatIsNotShown) {
    EXPECT_EQ(treeFor({"n", "ff", "q"}),
              R"(<folder name="Sales"><folder name="More"><querySubject name="Orders"/></folder>)"
              R"(</folder>)");
    EXPECT_EQ(treeFor({"n", "i"}), R"(<folder name="Sales"><queryItem name="Quantity"/></folder>)");
}

TEST(ShownObjects, IncludeTheStartObjectAlways) {
    EXPECT_EQ(treeFor({}), R"(<folder name="Sales"/>)");
    EXPECT_EQ(treeFor({"i"}, "start_at='[Sales].[Facts].[More].[Orders]'"),
              R"(<querySubject name="Orders"><queryItem name="Quantity"/></querySubject>)");
}

TEST(ShownObjects, IncludeMembersBeyondTheDepthOfAContainerThatIsNotShown) {
    EXPECT_EQ(treeFor({"n", "ff", "q"}, "Depth='2'"),
              R"(<folder name="Sales"><folder name="More"/></folder>)");
    EXPECT_EQ(treeFor({"n", "q", "i"}, "Depth='2'"),
              R"(<folder name="Sales"><querySubject name="Orders"/></folder>)");
    EXPECT_EQ(treeFor({"n", "i"}, "Depth='2'"),
              R"(<folder name="Sales"><queryItem name="Quantity"/></folder>)");
}

TEST(ShownObjects, CountTheLevelsThatAreLeftOut) {
    std::string folders = "<folder id='i'/>";
    for (int level = 1'025; level > 1; --level) {
        folders = "<folder>" + folders + "</folder>";
    }
    ProviderScene scene("<model id='m'><namespace id='n' name='N'>" + folders +
                            "</namespace><securityViews><securityView id='v'><set kind='included'>"
                            "<item>n</item></set></securityView></securityViews></model>",
                        "/content/m");
    scene.session.setViews({"v"});
    scene.expectRefused("<Metadata Depth='2'><Property a='*/@_path'/><Property a='*/folder'/>"
                        "</Metadata>",
                        1444379514, 0, "VexMDMaProvider::GetRequestedElementTreeAtLevel",
                        {"[N]" + [] {
                            std::string path;
                            for (int level = 0; level < 1'023; ++level) {
                                path += ".[]";
                            }
                            return path;
                        }()});
}

TEST(ShownObjects, LeaveOutANamespaceForWhichOnlyItsOwnContentSpeaks) {
    EXPECT_EQ(treeFor({"n", "q2"}),
              R"(<folder name="Sales"><querySubject name="Staff"/></folder>)");
}

TEST(ShownObjects, IncludeAnObjectWithoutAnIdWhenTheEmptyIdIsIncluded) {
    EXPECT_EQ(treeFor({"n", ""}), R"(<folder name="Sales"><querySubject name="No id"/></folder>)");
    EXPECT_EQ(treeFor({"n"}), R"(<folder name="Sales"/>)");
}

TEST(ShownObjects, KeepTheContainersPathWhenThatIsNotShown) {
    ProviderScene scene(modelIncluding({"n", "q"}), "/content/m");
    scene.session.setViews({"v"});
    EXPECT_EQ(scene.ask("<Metadata><Property a='*/@_path'/><Property a='*/folder'/>"
                        "<Property a='*/querySubject'/></Metadata>"),
              R"(<folder _path="[Sales]">)"
              R"(<querySubject _path="[Sales].[Facts].[More].[Orders]"/></folder>)");
}

TEST(ShownObjects, AreNotAskedAboutWithoutAttributes) {
    ProviderScene scene(R"(<model><namespace name="Sales"/></model>)", "/content/m");
    scene.session.setViews({"v"});
    // The model has no view at all: the first question would fail.
    EXPECT_EQ(scene.ask("<Metadata><Property a='./@nothing'/></Metadata>"), "");
    expectFailure([&] { scene.ask("<Metadata><Property a='./@name'/></Metadata>"); }, 1170839636,
                  "VexMDAccessEngine", 0, "VexMDAccessEngine::populateAccessInfo");
}

} // namespace
