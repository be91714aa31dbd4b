#include "host/store/image/FileBeside.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class FileBesideTest : public testing::Test {
protected:
    FileBesideTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "besideXXXXXX").string();
        m_folder = ::mkdtemp(pattern.data());
    }
    ~FileBesideTest() override { std::filesystem::remove_all(m_folder); }

    std::string place() const { return (m_folder / "file").string(); }

    std::filesystem::path m_folder;
};

TEST_F(FileBesideTest, HasTheRightsThatTheMaskLeavesWhichStaysAsItIs) {
    for (mode_t const mask : {022U, 027U, 077U}) {
        mode_t const before = ::umask(mask);
        vex::FileBeside file(place());
        file.write("text");
        file.finish();
        file.putInPlace();
        struct stat status {};
        ASSERT_EQ(::stat(place().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, 0666U & ~mask);
        EXPECT_EQ(::umask(before), mask);
    }
}

TEST_F(FileBesideTest, LeavesNothingUnlessItIsPutInItsPlace) {
    {
        vex::FileBeside one(place());
        vex::FileBeside other(place()); // of another process, say
        one.write("half");
        other.write("half");
    }
    std::filesystem::directory_iterator const left(m_folder);
    EXPECT_EQ(std::distance(left, std::filesystem::directory_iterator()), 0);
}

} // namespace
