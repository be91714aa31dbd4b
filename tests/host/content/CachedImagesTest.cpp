#include "host/content/CachedImages.h"

#include "tests/host/content/CachePlace.h"

#include <optional>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

vex::FileState numbered(ino_t inode, long time = 1) {
    struct stat status {};
    status.st_ino = inode;
    status.st_mtim.tv_sec = time;
    return vex::FileState(status);
}

class CachedImages : public testing::Test {
protected:
    CachedImages() {
        std::string problem;
        m_folder = vex::CacheFolder::make(m_place.cache(), problem);
    }

    /// Puts an image there of so many kilobytes, which was used at that time.
    void place(std::string const& document, std::size_t kilobytes, long used,
               vex::FileState const& state = numbered(1)) {
        vex::ImageName const name(document, state, "plain");
        constexpr std::size_t kilobyte = 1'024;
        m_place.write("cache/new", std::string(kilobytes * kilobyte, 'x'));
        ASSERT_TRUE(vex::placeImage(*m_folder, "new", name, document));
        timespec const times[] = {{used, 0}, {used, 0}};
        ASSERT_EQ(::utimensat(AT_FDCWD, m_place.path("cache/" + name.text()).c_str(), times, 0), 0);
    }

    std::vector<std::string> documents() const {
        std::vector<std::string> found;
        for (vex::CachedImage const& each : vex::listImages(*m_folder)) {
            found.push_back(each.document);
        }
        return found;
    }

    CachePlace m_place;
    std::optional<vex::CacheFolder> m_folder;
};

TEST_F(CachedImages, HaveNamesThatTellDocumentStateAndKindApart) {
    vex::ImageName const name("/a.xml", numbered(1), "plain");
    EXPECT_EQ(vex::ImageName("/a.xml", numbered(1), "plain").text(), name.text());
    EXPECT_NE(vex::ImageName("/b.xml", numbered(1), "plain").text(), name.text());
    EXPECT_NE(vex::ImageName("/a.xml", numbered(2), "plain").text(), name.text());
    EXPECT_NE(vex::ImageName("/a.xml", numbered(1, 2), "plain").text(), name.text());
    EXPECT_NE(vex::ImageName("/a.xml", numbered(1), "placed").text(), name.text());
    EXPECT_EQ(vex::ImageName("/a.xml", numbered(1), "../x/y").text().find('/'), std::string::npos);
}

TEST_F(CachedImages, AreListedUsedLastFirst) {
    place("/a.xml", 4, 100);
    place("/b.xml", 8, 300);
    place("/c.xml", 4, 200);
    EXPECT_THAT(documents(), ElementsAre("/b.xml", "/c.xml", "/a.xml"));
    std::vector<vex::CachedImage> const images = vex::listImages(*m_folder);
    EXPECT_EQ(images.front().bytes, 8'192U);
    EXPECT_EQ(images.front().used.time_since_epoch(), std::chrono::seconds(300));
}

TEST_F(CachedImages, OfOneDocumentAreReplacedByThatOfItsNewState) {
    place("/a.xml", 4, 100, numbered(1));
    place("/b.xml", 4, 100, numbered(1));
    place("/a.xml", 4, 200, numbered(2));
    EXPECT_THAT(documents(), ElementsAre("/a.xml", "/b.xml"));
    EXPECT_THAT(m_place.files(".of"), SizeIs(2));
}

TEST_F(CachedImages, ThatWereNotUsedForLongestGoUntilTheRestTakesNoMore) {
    place("/a.xml", 8, 100);
    place("/b.xml", 8, 300);
    place("/c.xml", 8, 200);
    vex::boundImages(*m_folder, 24 * 1'024);
    EXPECT_THAT(documents(), ElementsAre("/b.xml", "/c.xml", "/a.xml"));
    vex::boundImages(*m_folder, 16 * 1'024);
    EXPECT_THAT(documents(), ElementsAre("/b.xml", "/c.xml"));
    vex::boundImages(*m_folder, 0);
    EXPECT_THAT(documents(), IsEmpty());
    EXPECT_THAT(m_place.files(".of"), IsEmpty());
}

TEST_F(CachedImages, ThatWereNeverFinishedGo) {
    m_place.write(std::string("cache/") + vex::UnfinishedImageName, "half");
    m_place.write(std::string("cache/") + vex::UnfinishedImageName + ".a1b2", "half");
    m_place.write("cache/unknown", "of somebody else");
    vex::boundImages(*m_folder, 1'000'000);
    EXPECT_THAT(m_folder->names(), ElementsAre("unknown"));
}

TEST_F(CachedImages, AreClearedAndNothingElseIs) {
    place("/a.xml", 4, 100);
    m_place.write("cache/unknown", "of somebody else");
    EXPECT_THAT(vex::clearImages(*m_folder),
                ElementsAre(Field(&vex::CachedImage::document, "/a.xml")));
    EXPECT_THAT(m_folder->names(), ElementsAre("unknown"));
}

TEST_F(CachedImages, AreListedWithoutADocumentThatWasLost) {
    place("/a.xml", 4, 100);
    for (std::string const& link : m_place.files(".of")) {
        std::filesystem::remove(link);
    }
    EXPECT_THAT(documents(), ElementsAre(""));
}

} // namespace
