// Models that are deep, wide, long-winded or confusing.

#include "tests/hostile/HostileSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr char const* everything =
    "<Metadata Depth='0'><Property n='*/@name'/><Property n='*/@_path'/><Property n='*/@_ref'/>"
    "<Property n='*/*'/></Metadata>";

TEST(Models, OfFoldersToTheFullDepthAreAnsweredWhole) {
    std::size_t const folders = 510; // the model, the namespace and these are 512
    std::string const model = "<model><namespace name='N'>" +
                              repeated("<folder name='F'>", folders) +
                              repeated("</folder>", folders) + "</namespace></model>";
    HostileSession session(model);
    vex::MetadataAnswer const answer = session.call(everything);
    EXPECT_EQ(answer.end.text, "");
    EXPECT_EQ(answer.response.elementCount(), folders + 3);
    std::string path = "[N]" + repeated(".[F]", folders);
    EXPECT_THAT(session.ask("<Metadata start_at='" + path +
                            "'><Property n='*/@name'/><Property n='*/folder'/></Metadata>"),
                HasSubstr("<folder name=\"F\"/>"));
}

TEST(Models, WithVeryManySiblingsAreAnsweredWhole) {
    std::size_t const siblings = hostileSize(50'000);
    std::string text = "<model><namespace name='N'>";
    for (std::size_t i = 0; i < siblings; ++i) {
        text += "<filter id='" + std::to_string(i) + "' name='F" + std::to_string(i) + "'/>";
    }
    HostileSession session(text + "</namespace></model>");
    session.limits.response.elements = siblings + 10;
    vex::MetadataAnswer const answer = session.call(everything);
    EXPECT_EQ(answer.end.text, "");
    EXPECT_EQ(answer.response.elementCount(), siblings + 3);
    EXPECT_THAT(session.ask("<Metadata start_at='[N].[F" + std::to_string(siblings - 1) +
                            "]'><Property n='*/@name'/><Property n='*/filter'/></Metadata>"),
                HasSubstr("name=\"F" + std::to_string(siblings - 1) + "\""));
}

TEST(Models, WithVeryLongNamesGiveThemBackWhole) {
    std::string const name(100'000, 'n');
    HostileSession session("<model><namespace name='" + name + "'><filter id='" + name +
                           "' name='" + name + "'/></namespace></model>");
    EXPECT_THAT(session.ask(everything), HasSubstr("_path=\"[" + name + "].[" + name + "]\""));
    EXPECT_THAT(session.ask("<Metadata start_atRef='[" + name + "].[" + name +
                            "]'><Property n='*/@name'/></Metadata>"),
                HasSubstr("<filter name=\"" + name + "\"/>"));
}

TEST(Models, WithIdsThatDifferInCaseOnlyKeepThemApart) {
    HostileSession session(
        "<model><namespace id='n' name='N'><filter id='a' name='1'/><filter id='A' name='2'/>"
        "<filter id='&#228;' name='3'/><filter id='&#196;' name='4'/>"
        "<filter id='&#x131;' name='5'/><filter id='i' name='6'/></namespace>"
        "<securityViews><securityView id='v'><set kind='included'>"
        "<item>A</item><item>&#228;</item><item>&#x131;</item></set></securityView>"
        "<securityView id='V'><set kind='included'><item>a</item></set></securityView>"
        "</securityViews></model>",
        "<catalog><model path='/content/m' file='m'><grant role='r' view='v'/></model>"
        "<user name='ann'><role>r</role></user></catalog>");
    EXPECT_FALSE(session.isIncluded("a"));
    EXPECT_TRUE(session.isIncluded("A"));
    EXPECT_TRUE(session.isIncluded("ä"));
    EXPECT_FALSE(session.isIncluded("Ä"));
    EXPECT_TRUE(session.isIncluded("ı"));
    EXPECT_FALSE(session.isIncluded("i"));
}

TEST(Models, WhereEveryViewNamesEveryObjectAreAnswered) {
    std::size_t const objects = hostileSize(1'000);
    std::string entries;
    std::string filters;
    for (std::size_t i = 0; i < objects; ++i) {
        entries += "<item>" + std::to_string(i) + "</item>";
        filters += "<filter id='" + std::to_string(i) + "' name='F'/>";
    }
    std::string views;
    for (int i = 0; i < 50; ++i) {
        views += "<securityView id='v" + std::to_string(i) +
                 "' roleBased='true'><member roleId='r'/><set kind='included'>" + entries +
                 "</set><set kind='hidden'>" + entries + "</set></securityView>";
    }
    HostileSession session("<model><namespace id='n' name='N'>" + filters +
                               "</namespace><securityViews>" + views + "</securityViews></model>",
                           "<catalog><model path='/content/m' file='m'>"
                           "<grant role='r' view='v1'/></model>"
                           "<user name='ann'><role>r</role></user></catalog>");
    EXPECT_THAT(session.ask(everything), testing::Not(HasSubstr("<filter")));
}

} // namespace
