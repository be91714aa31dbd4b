#include "host/content/ImageCache.h"

#include "KRLException.h"
#include "VexObject.h"
#include "host/catalogue/PolicyViews.h"
#include "tests/host/content/CachePlace.h"

#include <map>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class ImageCacheTest : public testing::Test {
protected:
    ImageCacheTest() { m_place.write("m.xml", CachePlace::textOf("First")); }

    std::string file() const { return m_place.path("m.xml"); }

    /// As a run of a program does; gives the name of the namespace.
    std::string run(vex::LoadOptions const& load = {}, std::string const& addition = "") {
        vex::ImageCache cache(m_options);
        std::shared_ptr<vex::Model const> const model = cache.load(file(), load, addition);
        m_notes = cache.finish();
        I18NString name;
        VexObject(VexObject(model->findById("n")).GetPropertyByName("name", nullptr))
            .GetValue(name, true);
        return name.toUtf8();
    }

    /// Whether the document was read: then it tells how far it came.
    bool isRead(vex::LoadOptions load = {}) {
        bool isRead = false;
        load.progress = [&](std::size_t, std::size_t) { isRead = true; };
        EXPECT_EQ(run(load), "First");
        return isRead;
    }

    CachePlace m_place;
    vex::ImageCacheOptions m_options = m_place.options();
    std::map<std::string, std::string> m_notes;
};

TEST_F(ImageCacheTest, OpensTheSecondTimeWhatItReadTheFirst) {
    EXPECT_TRUE(isRead());
    EXPECT_THAT(m_notes, IsEmpty());
    EXPECT_THAT(m_place.files(), SizeIs(1));
    EXPECT_FALSE(isRead());
    EXPECT_THAT(m_notes, IsEmpty());
    EXPECT_THAT(m_place.files(), SizeIs(1));
}

TEST_F(ImageCacheTest, IsForItsOwnerAlone) {
    run();
    for (std::string const& file : m_place.files()) {
        struct stat status {};
        ASSERT_EQ(::stat(file.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, 0600U);
    }
}

TEST_F(ImageCacheTest, ReadsADocumentAgainThatChanged) {
    run();
    m_place.write("m.xml", CachePlace::textOf("Other"));
    EXPECT_EQ(run(), "Other");
    EXPECT_EQ(run(), "Other");
    EXPECT_THAT(m_place.files(), SizeIs(1)); // that of the state before is of no use any more
}

TEST_F(ImageCacheTest, ReadsADocumentAgainWhoseTimeWasSetBack) {
    run();
    auto const time = std::filesystem::last_write_time(file());
    m_place.write("m.xml", CachePlace::textOf("Other"));
    std::filesystem::last_write_time(file(), time);
    EXPECT_EQ(run(), "Other");
}

TEST_F(ImageCacheTest, KeepsNoImageOfADocumentThatChangedAMomentAgo) {
    m_options.settled = std::chrono::hours(24);
    run();
    EXPECT_THAT(m_notes, UnorderedElementsAre(Pair(file(), HasSubstr("changed a moment ago"))));
    EXPECT_THAT(m_place.files(), IsEmpty());
}

TEST_F(ImageCacheTest, KeepsNoImageOfADocumentThatChangedWhileItWasRead) {
    vex::LoadOptions load;
    load.progress = [&](std::size_t, std::size_t) {
        std::filesystem::permissions(file(), std::filesystem::perms::owner_read);
        std::filesystem::permissions(file(), std::filesystem::perms::owner_all);
    };
    run(load);
    EXPECT_THAT(m_notes,
                UnorderedElementsAre(Pair(file(), HasSubstr("changed while it was read"))));
    EXPECT_THAT(m_place.files(), IsEmpty());
}

TEST_F(ImageCacheTest, KeepsNoImageOfASmallDocument) {
    m_options.leastDocument = 1'000;
    run();
    EXPECT_THAT(m_notes, IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(m_place.cache()));
}

TEST_F(ImageCacheTest, TellsOfAnErrorInADocumentEachTimeAndKeepsNoImageOfIt) {
    m_place.write("m.xml", "<model>\n<namespace id='n'>\n</model>");
    for (int time = 0; time < 2; ++time) {
        vex::ImageCache cache(m_options);
        try {
            cache.load(file(), {});
            FAIL() << "it was loaded";
        } catch (KRLDocumentException const& problem) {
            EXPECT_EQ(problem.GetLine(), 3U);
            EXPECT_THAT(problem.what(), HasSubstr(file()));
        }
    }
    EXPECT_THAT(m_place.files(), IsEmpty());
}

TEST_F(ImageCacheTest, RefusesADocumentPastItsLimitThoughItsImageIsThere) {
    run();
    vex::LoadOptions load;
    load.input.bytes = 10;
    EXPECT_THROW(run(load), KRLDocumentException);
}

TEST_F(ImageCacheTest, HasAnImageWithAndOneWithoutPositions) {
    vex::LoadOptions load;
    EXPECT_TRUE(isRead(load));
    load.keepPositions = true;
    EXPECT_TRUE(isRead(load));
    EXPECT_FALSE(isRead(load));
    vex::ImageCache cache(m_options);
    auto const placed = cache.load(file(), load);
    auto const position = placed->findPosition(placed->findById("n"));
    ASSERT_TRUE(position);
    EXPECT_EQ(position->line, 1U);
    auto const plain = cache.load(file(), {});
    EXPECT_FALSE(plain->findPosition(plain->findById("n")));
}

TEST_F(ImageCacheTest, HasAnImageForEachAdditionThatHasAName) {
    auto const countWith = [&](std::string const& rules, std::string const& name) {
        auto const policy = vex::readPolicyText(rules, "p.yaml");
        vex::PolicyViews views(*policy);
        vex::LoadOptions load;
        load.addition = &views;
        vex::ImageCache cache(m_options);
        return cache.load(file(), load, name)->elementCount();
    };
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(countWith("views: {v: {include: '[First]'}}", "one"), 6U);
        EXPECT_EQ(countWith("views: {v: {include: '[First]'}, w: {include: '[First]'}}", "two"),
                  9U);
        EXPECT_EQ(countWith("views: {}", ""), 2U);
    }
    EXPECT_THAT(m_place.files(), SizeIs(2)); // none of the addition that has no name
    EXPECT_TRUE(isRead());
}

TEST_F(ImageCacheTest, KeepsNoImageOfADocumentThatWasReadUnderOtherLimits) {
    vex::LoadOptions load;
    load.limits.depth = 100;
    EXPECT_TRUE(isRead(load));
    EXPECT_TRUE(isRead(load));
    EXPECT_THAT(m_place.files(), IsEmpty());
}

TEST_F(ImageCacheTest, ThrowsAnImageAwayThatIsDamagedAndReadsTheDocument) {
    run();
    ASSERT_THAT(m_place.files(), SizeIs(1));
    std::string const whole = CachePlace::read(m_place.files().front());
    for (std::string const& damaged :
         {std::string(), std::string("no image"), whole.substr(0, whole.size() / 2)}) {
        std::ofstream(m_place.files().front(), std::ios::binary) << damaged;
        EXPECT_TRUE(isRead());
        EXPECT_THAT(m_notes, UnorderedElementsAre(Pair(file(), HasSubstr("was thrown away"))));
        EXPECT_FALSE(isRead()); // which wrote it again
    }
}

TEST_F(ImageCacheTest, ReadsTheDocumentWhereItsFolderCannotBeTrusted) {
    run();
    std::filesystem::permissions(m_place.cache(), std::filesystem::perms::all);
    EXPECT_TRUE(isRead());
    EXPECT_THAT(m_notes,
                UnorderedElementsAre(Pair(file(), HasSubstr("nobody else may write to it"))));
}

TEST_F(ImageCacheTest, ReadsTheDocumentWhereItsFolderCannotBeMade) {
    m_place.write("cache", "no folder");
    EXPECT_TRUE(isRead());
    EXPECT_THAT(m_notes, UnorderedElementsAre(Pair(file(), HasSubstr("Not a directory"))));
}

TEST_F(ImageCacheTest, KeepsNoImageThatIsLargerThanTheCacheMayGrow) {
    m_options.mostBytes = 10;
    EXPECT_TRUE(isRead());
    EXPECT_THAT(m_notes, UnorderedElementsAre(Pair(file(), HasSubstr("larger than the cache"))));
    EXPECT_THAT(m_place.files(), IsEmpty());
}

TEST_F(ImageCacheTest, DoesNotWriteWhileAnotherRunDoes) {
    std::string problem;
    auto folder = vex::CacheFolder::make(m_place.cache(), problem);
    ASSERT_TRUE(folder && folder->lock());
    EXPECT_TRUE(isRead());
    EXPECT_THAT(m_notes, UnorderedElementsAre(Pair(file(), HasSubstr("another run"))));
    folder.reset();
    EXPECT_TRUE(isRead());
    EXPECT_FALSE(isRead());
}

TEST_F(ImageCacheTest, ReadsAPipeOnce) {
    std::string const pipe = m_place.path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&] { m_place.write("pipe", CachePlace::textOf("First")); });
    vex::ImageCache cache(m_options);
    EXPECT_TRUE(cache.load(pipe, {})->findById("n").IsNotNull());
    writer.join();
    cache.finish();
    EXPECT_THAT(m_place.files(), IsEmpty());
}

TEST_F(ImageCacheTest, WritesOneImageOfADocumentThatManyLoadAtOnce) {
    std::vector<std::thread> threads;
    for (int count = 0; count < 8; ++count) {
        threads.emplace_back([&] {
            vex::ImageCache cache(m_options);
            EXPECT_TRUE(cache.load(file(), {})->findById("n").IsNotNull());
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    EXPECT_THAT(m_place.files(), SizeIs(1));
    EXPECT_FALSE(isRead());
}

} // namespace
