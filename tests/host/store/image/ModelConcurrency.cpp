#include "tests/host/store/image/ModelProbe.h"

#include <atomic>
#include <set>
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

TEST(ModelConcurrency, ManyThreadsAskForSetsThatNobodyHasMadeYet) {
    int const count = 2'000;
    std::string views;
    for (int view = 0; view < 4; ++view) {
        views += "<securityView id='v" + std::to_string(view) + "'><set kind='included'>";
        for (int i = 0; i < count; ++i) {
            views += "<item>" + std::to_string(view) + "." + std::to_string(i) + "</item>";
        }
        views += "</set></securityView>";
    }
    for (int round = 0; round < 10; ++round) {
        Probe const probe("<model>" + views + "</model>");
        std::atomic<int> wrong{0};
        std::vector<std::shared_ptr<VexTextSet const>> got[4];
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&, thread] {
                for (int question = 0; question < 40; ++question) {
                    std::string const view = std::to_string((question + thread) % 4);
                    auto const set = VexObject(probe.id(("v" + view).c_str()))
                                         .FindTextSet("set", "kind", "included", "item");
                    if (set == nullptr) { // another thread is making it
                        std::this_thread::yield();
                        continue;
                    }
                    wrong += set->size() == 2'000 ? 0 : 1;
                    wrong += set->contains((view + ".1999").c_str()) ? 0 : 1;
                    wrong += set->contains((view + ".2000").c_str()) ? 1 : 0;
                    got[thread].push_back(set);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(wrong, 0);
        std::set<VexTextSet const*> different;
        for (auto const& sets : got) {
            for (auto const& set : sets) {
                different.insert(set.get());
            }
        }
        EXPECT_LE(different.size(), 4U); // each was made once
    }
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
