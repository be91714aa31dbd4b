#include "host/content/CacheFolder.h"

#include "tests/host/content/CachePlace.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class CacheFolderTest : public testing::Test {
protected:
    std::string m_problem;
    CachePlace m_place;
};

TEST_F(CacheFolderTest, IsMadeForItsOwnerAloneWithThoseAboveIt) {
    std::string const path = m_place.path("above/cache");
    ASSERT_TRUE(vex::CacheFolder::make(path, m_problem)) << m_problem;
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700U);
    ASSERT_EQ(::stat(m_place.path("above").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700U);
}

TEST_F(CacheFolderTest, ThatIsNotThereIsNoProblemToWhoOnlyLooks) {
    EXPECT_FALSE(vex::CacheFolder::open(m_place.cache(), m_problem));
    EXPECT_THAT(m_problem, IsEmpty());
}

TEST_F(CacheFolderTest, IsNotUsedWhereOthersMayWrite) {
    ASSERT_EQ(::mkdir(m_place.cache().c_str(), 0700), 0);
    for (mode_t const mode : {0770U, 0702U}) {
        ASSERT_EQ(::chmod(m_place.cache().c_str(), mode), 0);
        EXPECT_FALSE(vex::CacheFolder::make(m_place.cache(), m_problem));
        EXPECT_THAT(m_problem, HasSubstr("nobody else may write to it"));
    }
}

TEST_F(CacheFolderTest, IsNotUsedWhenItBelongsToSomebodyElse) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    ASSERT_EQ(::mkdir(m_place.cache().c_str(), 0700), 0);
    ASSERT_EQ(::chown(m_place.cache().c_str(), 1234, 1234), 0);
    EXPECT_FALSE(vex::CacheFolder::open(m_place.cache(), m_problem));
    EXPECT_THAT(m_problem, HasSubstr("must belong to who runs the program"));
}

TEST_F(CacheFolderTest, TellsWhyItCannotBeMade) {
    m_place.write("cache", "no folder");
    EXPECT_FALSE(vex::CacheFolder::make(m_place.cache(), m_problem));
    EXPECT_THAT(m_problem, HasSubstr("Not a directory"));
    EXPECT_FALSE(vex::CacheFolder::make(m_place.path("cache/below"), m_problem = ""));
    EXPECT_THAT(m_problem, HasSubstr("Not a directory"));
}

TEST_F(CacheFolderTest, BelievesNoFileThatOthersMayWriteToAndNoLink) {
    auto const folder = vex::CacheFolder::make(m_place.cache(), m_problem);
    ASSERT_TRUE(folder);
    m_place.write("cache/own", "text");
    ASSERT_EQ(::chmod(m_place.path("cache/own").c_str(), 0644), 0);
    EXPECT_TRUE(folder->has("own"));
    ASSERT_EQ(::chmod(m_place.path("cache/own").c_str(), 0666), 0);
    EXPECT_FALSE(folder->has("own"));
    m_place.write("elsewhere", "text");
    ASSERT_TRUE(folder->link("link", m_place.path("elsewhere")));
    EXPECT_FALSE(folder->has("link"));
    EXPECT_EQ(folder->readLink("link"), m_place.path("elsewhere"));
    EXPECT_EQ(folder->readLink("own"), "");
}

TEST_F(CacheFolderTest, StaysTheOneThatWasLookedAtWhateverTakesItsPlace) {
    auto const folder = vex::CacheFolder::make(m_place.cache(), m_problem);
    ASSERT_TRUE(folder);
    m_place.write("cache/image", "ours");
    std::filesystem::rename(m_place.cache(), m_place.path("away"));
    std::filesystem::create_directory(m_place.cache());
    m_place.write("cache/image", "theirs");
    EXPECT_EQ(CachePlace::read(folder->pathTo("image")), "ours");
}

TEST_F(CacheFolderTest, PutsAFileInItsPlaceForItsOwnerAlone) {
    auto const folder = vex::CacheFolder::make(m_place.cache(), m_problem);
    ASSERT_TRUE(folder);
    m_place.write("cache/new", "text");
    ASSERT_EQ(::chmod(m_place.path("cache/new").c_str(), 0644), 0);
    EXPECT_TRUE(folder->put("new", "kept"));
    EXPECT_EQ(CachePlace::read(m_place.path("cache/kept")), "text");
    struct stat status {};
    ASSERT_EQ(::stat(m_place.path("cache/kept").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    EXPECT_FALSE(folder->put("new", "kept"));
}

TEST_F(CacheFolderTest, IsLockedByOneAtATime) {
    auto one = vex::CacheFolder::make(m_place.cache(), m_problem);
    auto other = vex::CacheFolder::open(m_place.cache(), m_problem);
    ASSERT_TRUE(one && other);
    EXPECT_TRUE(one->lock());
    EXPECT_FALSE(other->lock());
    one.reset();
    EXPECT_TRUE(other->lock());
}

} // namespace
