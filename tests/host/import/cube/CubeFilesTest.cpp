#include "host/import/cube/CubeFiles.h"

#include "KRLException.h"
#include "host/import/draft/ImportWork.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

class CubeFiles : public testing::Test {
protected:
    CubeFiles() {
        std::string name = testing::TempDir() + "vex-cube-XXXXXX";
        m_folder = mkdtemp(name.data());
    }
    ~CubeFiles() override { fs::remove_all(m_folder); }

    void write(std::string const& name, std::string const& text) const {
        fs::create_directories((m_folder / name).parent_path());
        std::ofstream(m_folder / name) << text;
    }

    /// The names of files below the folder, each with its text.
    std::vector<std::string> read(vex::ImportWork& work) const {
        std::vector<std::string> found;
        for (auto const& [file, text] : vex::readCubeFiles(work)) {
            found.push_back(fs::relative(file, m_folder).string() + '=' + text);
        }
        return found;
    }

    vex::ImportRequest request() const { return {.source = m_folder.string(), .name = "m"}; }

    fs::path m_folder;
};

TEST_F(CubeFiles, AreAllOfAFolderInTheOrderOfTheirNames) {
    write("views/z.yaml", "1");
    write("cubes/b.yml", "2");
    write("cubes/deep/a.yml", "3");
    write("a.yml", "4");
    vex::ImportWork work(request());
    EXPECT_THAT(read(work),
                ElementsAre("a.yml=4", "cubes/b.yml=2", "cubes/deep/a.yml=3", "views/z.yaml=1"));
}

TEST_F(CubeFiles, LeaveOutProgramsLinksAndWhatIsNoYaml) {
    write("a.yml", "1");
    write("b.js", "2");
    write("c.md", "3");
    write(".git/d.yml", "4");
    fs::create_symlink(m_folder / "a.yml", m_folder / "e.yml");
    fs::create_directory_symlink(m_folder, m_folder / "f");
    vex::ImportWork work(request());
    EXPECT_THAT(read(work), ElementsAre("a.yml=1"));
    EXPECT_EQ(work.account.readOf("file"), 4U);
    EXPECT_EQ(work.account.mappedOf("file"), 0U);
}

TEST_F(CubeFiles, AreOneWhereTheSourceIsAFile) {
    write("a.yml", "1");
    vex::ImportRequest asked = request();
    asked.source += "/a.yml";
    vex::ImportWork work(asked);
    EXPECT_THAT(read(work), ElementsAre("a.yml=1"));
    asked.source += "x";
    vex::ImportWork other(asked);
    EXPECT_THROW(read(other), KRLDocumentException);
}

TEST_F(CubeFiles, AreRefusedPastTheLimitOfBytesAndWhereThereAreNone) {
    vex::ImportWork none(request());
    EXPECT_THROW(read(none), vex::SourceReport::Stop);
    EXPECT_THAT(toString(none.found.front()), HasSubstr("no file that ends with .yml"));
    write("a.yml", "12345");
    write("b.yml", "67890");
    vex::ImportRequest asked = request();
    asked.limits.sourceBytes = 9;
    vex::ImportWork work(asked);
    EXPECT_THROW(read(work), vex::SourceReport::Stop);
    EXPECT_THAT(toString(work.found.front()), HasSubstr("more than 9 bytes together"));
}

} // namespace
