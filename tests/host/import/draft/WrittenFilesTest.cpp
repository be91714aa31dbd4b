#include "host/import/draft/WrittenFiles.h"

#include "KRLException.h"
#include "host/import/xml/FileText.h"

#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

namespace {

class WrittenFiles : public testing::Test {
protected:
    WrittenFiles() {
        std::string path = (std::filesystem::temp_directory_path() / "written-XXXXXX").string();
        m_folder = ::mkdtemp(path.data());
    }
    ~WrittenFiles() override { std::filesystem::remove_all(m_folder); }

    std::string in(char const* name) const { return (m_folder / name).string(); }
    std::size_t count() const {
        auto const all = std::filesystem::recursive_directory_iterator(m_folder);
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

private:
    std::filesystem::path m_folder;
};

TEST_F(WrittenFiles, TakeThePlaceOfWhatWasThere) {
    vex::writeFilesTogether({{in("a"), "one"}});
    vex::writeFilesTogether({{in("a"), "two"}, {in("b"), ""}});
    EXPECT_EQ(vex::readFileText(in("a")), "two");
    EXPECT_EQ(vex::readFileText(in("b")), "");
    EXPECT_EQ(count(), 2U);
}

TEST_F(WrittenFiles, StandInFoldersThatAreMade) {
    vex::writeFilesTogether({{in("x/y/a"), "one"}});
    EXPECT_EQ(vex::readFileText(in("x/y/a")), "one");
}

TEST_F(WrittenFiles, AreAllOrNone) {
    vex::writeFilesTogether({{in("a"), "one"}});
    std::filesystem::create_directory(in("folder"));
    EXPECT_THROW(vex::writeFilesTogether({{in("a"), "two"}, {in("folder"), "x"}}),
                 KRLDocumentException);
    EXPECT_THROW(vex::writeFilesTogether({{in("a"), "two"}, {in("a/b"), "x"}}),
                 KRLDocumentException);
    EXPECT_EQ(vex::readFileText(in("a")), "one");
    EXPECT_EQ(count(), 2U);
}

} // namespace
