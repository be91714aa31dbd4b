#include "tests/host/store/image/ModelProbe.h"

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

namespace {

using Probe = ModelProbe;

std::string flatModel(int count) {
    std::string text = "<model defaultLocale='en'><namespace name='N'>";
    for (int i = 0; i < count; ++i) {
        std::string const number = std::to_string(i);
        text += "<a id='" + number + "'><property name='name' locale='en'>n" + number +
                "</property></a>";
    }
    return text + "</namespace></model>";
}

TEST(ModelConcurrency, ManyThreadsReadOneModel) {
    int const count = 500;
    Probe const probe(flatModel(count));
    std::atomic<int> right{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < count; ++i) {
                std::string const number = std::to_string(i);
                VEX_HANDLE const object = probe.id(number.c_str());
                bool const found = Probe::value(object, "name", "en_GB") == "n" + number &&
                                   probe.reference(("[N].[n" + number + "]").c_str()) == object;
                right += found ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(right, 4 * count);
}

TEST(ModelConcurrency, ModelsComeAndGoWhileOthersAreRead) {
    Probe const kept(flatModel(100));
    std::atomic<bool> done{false};
    std::thread loading([&] {
        for (int i = 0; i < 50; ++i) {
            vex::loadModelText(flatModel(20), "other.model.xml");
        }
        done = true;
    });
    int wrong = 0;
    while (!done) {
        wrong += Probe::value(kept.id("99"), "name", "en") == "n99" ? 0 : 1;
    }
    loading.join();
    EXPECT_EQ(wrong, 0);
}

TEST(ModelConcurrency, ModelsAreLoadedOnManyThreadsAtOnce) {
    std::atomic<int> right{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            Probe const probe(flatModel(200));
            right += Probe::value(probe.id("199"), "name", "en") == "n199" ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(right, 4);
}

} // namespace
