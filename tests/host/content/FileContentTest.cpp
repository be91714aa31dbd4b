#include "host/content/FileContent.h"

#include "KRLException.h"
#include "host/store/image/HostException.h"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <unistd.h>

namespace {

/// A folder with a catalogue of one model, whose text tests replace.
class FileContentTest : public testing::Test {
protected:
    FileContentTest()
        : m_folder(std::filesystem::temp_directory_path() /
                   ("vex-content-test-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(m_folder);
        writeModel("First");
    }
    ~FileContentTest() override { std::filesystem::remove_all(m_folder); }

    std::string file() const { return (m_folder / "m.xml").string(); }

    void writeModel(std::string const& name) const {
        std::ofstream(file()) << "<model defaultLocale=\"en\"><namespace id=\"n\" name=\"" << name
                              << "\"/></model>";
    }

    std::shared_ptr<vex::Catalogue const> catalogue() const {
        vex::Diagnostics found;
        return vex::readCatalogueText(R"(<catalog><model path="/content/m" file="m.xml"/>
                                         <user name="ann"/></catalog>)",
                                      "c.xml", m_folder.string(), found);
    }

    std::filesystem::path m_folder;
};

TEST_F(FileContentTest, ReadsAModelOnce) {
    vex::FileContent content(catalogue());
    auto const first = content.getModel("/content/m");
    EXPECT_EQ(content.getModel("/content/m"), first);
    EXPECT_EQ(first->path(), "/content/m");
    EXPECT_TRUE(first->model()->findById("n").IsNotNull());
}

TEST_F(FileContentTest, LeavesTheVersionBeforeAsItWasWhenAModelIsReloaded) {
    vex::FileContent content(catalogue());
    auto const before = content.getModel("/content/m");
    std::shared_ptr<vex::Model const> const model = before->model();
    writeModel("Second one");
    auto const after = content.reloadModel("/content/m");
    EXPECT_NE(after, before);
    EXPECT_EQ(before->model(), model);
    EXPECT_EQ(content.getModel("/content/m"), after);
}

TEST_F(FileContentTest, TellsAVersionThatItIsNotTheNewestAnyMore) {
    vex::FileContent content(catalogue());
    auto const before = content.getModel("/content/m");
    EXPECT_TRUE(before->isNewest());
    auto const after = content.reloadModel("/content/m");
    EXPECT_FALSE(before->isNewest());
    EXPECT_TRUE(after->isNewest());
}

TEST_F(FileContentTest, StampsVersionsByTheirFile) {
    vex::FileContent content(catalogue());
    auto const before = content.getModel("/content/m");
    EXPECT_EQ(content.reloadModel("/content/m")->stamp(), before->stamp());
    EXPECT_EQ(vex::FileContent(catalogue()).getModel("/content/m")->stamp(), before->stamp());
    writeModel("Second one");
    EXPECT_NE(content.reloadModel("/content/m")->stamp(), before->stamp());
}

TEST_F(FileContentTest, KeepsTheVersionBeforeWhenTheNewOneCannotBeRead) {
    vex::FileContent content(catalogue());
    auto const before = content.getModel("/content/m");
    std::ofstream(file()) << "<model";
    EXPECT_THROW(content.reloadModel("/content/m"), KRLDocumentException);
    EXPECT_EQ(content.getModel("/content/m"), before);
    EXPECT_TRUE(before->isNewest());
}

TEST_F(FileContentTest, NamesTheKnownModelPathsWhenOneIsUnknown) {
    vex::FileContent content(catalogue());
    try {
        content.getModel("/content/x");
        FAIL() << "nothing was raised";
    } catch (vex::HostException const& problem) {
        EXPECT_STREQ(problem.what(),
                     "unknown model path \"/content/x\"; the catalogue has \"/content/m\"");
    }
}

TEST_F(FileContentTest, HasOneFileWithoutACatalogue) {
    vex::FileContent content("file:m.xml", file());
    EXPECT_EQ(content.getCatalogue(), nullptr);
    EXPECT_EQ(content.getModel("file:m.xml")->path(), "file:m.xml");
    EXPECT_THROW(content.getModel("file:other.xml"), vex::HostException);
}

} // namespace
