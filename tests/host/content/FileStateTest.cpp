#include "host/content/FileState.h"

#include "tests/host/content/CachePlace.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using std::chrono::seconds;
using std::chrono::system_clock;

vex::FileState stateAt(long modified, long changed) {
    struct stat status {};
    status.st_dev = 0xD;
    status.st_ino = 0x1E;
    status.st_size = 0x5F;
    status.st_mtim = {modified, 1};
    status.st_ctim = {changed, 2};
    return vex::FileState(status);
}

TEST(FileState, IsAnotherOneOnceTheFileWasWrittenToOrReplacedWhateverItsTime) {
    CachePlace const place;
    place.write("m.xml", "one");
    auto const before = vex::FileState::of(place.path("m.xml"));
    ASSERT_TRUE(before);
    EXPECT_EQ(vex::FileState::of(place.path("m.xml")), before);

    place.write("other.xml", "two");
    std::filesystem::last_write_time(place.path("other.xml"),
                                     std::filesystem::last_write_time(place.path("m.xml")));
    std::filesystem::rename(place.path("other.xml"), place.path("m.xml"));
    EXPECT_NE(vex::FileState::of(place.path("m.xml")), before);
}

TEST(FileState, IsThatOfFilesAlone) {
    CachePlace const place;
    EXPECT_FALSE(vex::FileState::of(place.path("none.xml")));
    EXPECT_FALSE(vex::FileState::of(place.path(".")));
    ASSERT_EQ(::mkfifo(place.path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(vex::FileState::of(place.path("pipe")));
}

TEST(FileState, NamesAllThatTellsItFromAnother) {
    EXPECT_EQ(stateAt(1, 2).text(), "d-1e-5f-3b9aca01-77359402");
}

TEST(FileState, IsSettledOnceBothTimesLieTheMarginBack) {
    system_clock::time_point const now{seconds(1'000)};
    EXPECT_TRUE(stateAt(997, 997).isSettled(now, seconds(2)));
    EXPECT_FALSE(stateAt(998, 997).isSettled(now, seconds(2))); // by a nanosecond
    EXPECT_FALSE(stateAt(997, 998).isSettled(now, seconds(2)));
    EXPECT_FALSE(stateAt(2'000, 997).isSettled(now, seconds(2))); // of a clock that goes before
}

} // namespace
