#include "host/insight/FileFindings.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// "rule@line" of each; those in another file with its name before it.
std::vector<std::string> lines(vex::Diagnostics const& found, std::string const& file) {
    std::vector<std::string> list;
    for (vex::Diagnostic const& each : found) {
        std::string const other =
            each.file == file ? "" : std::filesystem::path(each.file).filename().string() + ' ';
        list.push_back(other + each.rule + '@' + std::to_string(each.line));
    }
    return list;
}

using Lines = std::vector<std::string>;

TEST(FindingCounts, CountEachSeverityApart) {
    vex::Diagnostics found(6);
    found[0].severity = found[1].severity = found[2].severity = vex::Severity::Note;
    found[3].severity = found[4].severity = vex::Severity::Warning;
    vex::FindingCounts const counts = vex::countFindings(found);
    EXPECT_EQ(counts.errors, 1U);
    EXPECT_EQ(counts.warnings, 2U);
    EXPECT_EQ(counts.notes, 3U);
}

TEST(CatalogueText, IsKnownByItsOutermostElement) {
    EXPECT_TRUE(vex::isCatalogueText("<catalog/>"));
    EXPECT_TRUE(vex::isCatalogueText("<?xml version='1.0'?>\n<!-- <model> -->\n<catalog a='b'>"));
    EXPECT_TRUE(vex::isCatalogueText("<catalog\n>"));
    EXPECT_FALSE(vex::isCatalogueText("<model><catalog/></model>"));
    EXPECT_FALSE(vex::isCatalogueText("<catalogue/>"));
    EXPECT_FALSE(vex::isCatalogueText("<!-- <catalog/>"));
    EXPECT_FALSE(vex::isCatalogueText(""));
}

TEST(FileFindings, OfAModelAreInTheOrderOfPlaces) {
    // The checks look for shortcuts first, for names second.
    EXPECT_EQ(lines(vex::findInModel("<model><namespace name='A'>\n"
                                     "<folder name='B'/>\n"
                                     "<folder name='B'/>\n"
                                     "<shortcut name='S' refobj='[A].[None]'/></namespace></model>",
                                     "m.xml"),
                    "m.xml")
                  .at(0),
              "duplicate-reference@3");
}

TEST(FileFindings, OfAModelThatCannotBeReadAreItsErrors) {
    EXPECT_EQ(
        lines(vex::findInModel("<model>\n<x id='a'/>\n<x id='a'/>\n<property/>\n</model>", "m.xml"),
              "m.xml"),
        (Lines{"duplicate-id@3", "property-without-name@4"}));
}

TEST(FileFindings, OfAModelTellHowFarTheReadingIs) {
    std::size_t told = 0;
    std::string const text = "<model>" + std::string(1'000'000, ' ') + "</model>";
    vex::findInModel(text, "m.xml", [&](std::size_t done, std::size_t total) {
        ++told;
        EXPECT_LE(done, total);
    });
    EXPECT_GT(told, 0U);
}

/// A folder with models for catalogues to name.
class CatalogueFindings : public testing::Test {
protected:
    CatalogueFindings()
        : m_folder(std::filesystem::temp_directory_path() /
                   ("vex-file-findings-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(m_folder);
        std::ofstream(m_folder / "lost.xml")
            << "<model><namespace name='A'>\n<shortcut name='S' refobj='[A].[None]'/></namespace>"
               "</model>";
    }
    ~CatalogueFindings() override { std::filesystem::remove_all(m_folder); }

    Lines in(std::string const& catalogue) const {
        return lines(vex::findInCatalogue(catalogue, "c.xml", m_folder.string()), "c.xml");
    }

    std::filesystem::path const m_folder;
};

TEST_F(CatalogueFindings, AreItsOwnFirstThenThoseOfItsModels) {
    EXPECT_EQ(
        in("<catalog>\n<model path='/content/a' file='lost.xml'>"
           "<grant role='r' view='v9'/></model>\n"
           "<model path='/elsewhere' file='lost.xml'/><user name='u'><role>r</role></user>"
           "</catalog>"),
        (Lines{"granted-view-missing@2", "unrestricted-path@3", "lost.xml dangling-refobj@2"}));
}

TEST_F(CatalogueFindings, HoldAModelThatCannotBeRead) {
    EXPECT_EQ(in("<catalog>\n<model path='/content/a' file='none.xml'/></catalog>"),
              Lines{"model-unreadable@2"});
}

TEST_F(CatalogueFindings, AreItsErrorsWhenItCannotBeRead) {
    EXPECT_EQ(in("<catalog>\n<x/><model path='/content/a' file='lost.xml'/></catalog>"),
              Lines{"catalogue-element@2"});
}

} // namespace
