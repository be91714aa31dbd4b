#include "provider/VexMDMaProvider.h"

#include <barrier>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

// The only test of this program that touches the set: it finds it empty.
TEST(SecuredObjects, ThreadsThatAskForThemAtOnceAllSeeThemComplete) {
    constexpr std::size_t threadCount = 8;
    std::barrier start(static_cast<std::ptrdiff_t>(threadCount));
    std::vector<std::set<I18NString> const*> seen(threadCount);
    std::vector<std::size_t> sizes(threadCount);
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < threadCount; ++number) {
        threads.emplace_back([&, number] {
            start.arrive_and_wait();
            seen[number] = &VexMDMaProvider::GetSecuredObjectsSet();
            sizes[number] = seen[number]->size();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::size_t number = 0; number < threadCount; ++number) {
        EXPECT_EQ(seen[number], seen[0]);
        EXPECT_EQ(sizes[number], 9U);
    }
}
