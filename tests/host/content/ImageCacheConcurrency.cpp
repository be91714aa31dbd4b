#include "host/content/ImageCache.h"
#include "tests/host/content/CachePlace.h"

#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(ImageCacheConcurrency, ThreadsLoadAndFinishAtOnce) {
    CachePlace const place;
    place.write("a.xml", CachePlace::textOf("A"));
    place.write("b.xml", CachePlace::textOf("B"));
    vex::ImageCache cache(place.options());
    std::vector<std::thread> threads;
    for (std::string const file : {"a.xml", "b.xml", "a.xml", "b.xml"}) {
        threads.emplace_back([&, file] {
            constexpr int rounds = 20;
            for (int round = 0; round < rounds; ++round) {
                EXPECT_TRUE(cache.load(place.path(file), {})->findById("n").IsNotNull());
                cache.finish();
            }
        });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    EXPECT_EQ(place.files().size(), 2U);
}

} // namespace
