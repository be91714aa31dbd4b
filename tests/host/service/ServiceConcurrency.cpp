// Many callers of one service at once, while the model is replaced.

#include "KRLIDOM_Writer.h"
#include "host/content/MemoryContent.h"
#include "host/service/Service.h"
#include "tests/host/service/ServedModel.h"

#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr int callers = 6;
constexpr int rounds = 200;

TEST(ServiceConcurrency, AnswersEachCallerAsIfAloneWhileTheModelIsReplaced) {
    vex::MemoryContent content(servedCatalogue());
    content.setModel(servedPath, servedModel("version 0"));
    vex::Service service(servingPlugin(), 4); // fewer than are used at once
    vex::MetadataRequest const request{.properties = {"*/@name"}, .collections = {"*/*"}};
    std::atomic<int> wrong{0};
    std::atomic<bool> done{false};

    auto const work = [&](int number) {
        char const* const user = number % 2 == 0 ? "ann" : "ben";
        bool const seesCosts = number % 2 != 0;
        I18NLocale const locale(number % 3 == 0 ? "de" : "en");
        for (int round = 0; round < rounds; ++round) {
            vex::Visit const visit = vex::openVisit(content, {servedPath, user, locale});
            vex::MetadataAnswer const answer = service.metadata(visit, request, {});
            std::string const tree = KRLIDOM_Writer::toUtf8(answer.response.document());
            wrong += answer.end.isAnswered() ? 0 : 1;
            wrong += (tree.find("Costs") != std::string::npos) == seesCosts ? 0 : 1;
            wrong += (tree.find("Vertrieb") != std::string::npos) == (number % 3 == 0) ? 0 : 1;
            Vex_Handle_Collection objects;
            objects.push_back(visit.model().findById("q"));
            objects.push_back(visit.model().findById("c"));
            vex::AccessAnswer const access = service.access(visit, objects, 0, {});
            wrong += access.verdicts == std::vector<bool>{true, seesCosts} ? 0 : 1;
        }
    };
    std::vector<std::thread> threads;
    for (int number = 0; number < callers; ++number) {
        threads.emplace_back(work, number);
    }
    std::thread replacing([&] {
        for (int version = 1; !done; ++version) {
            content.setModel(servedPath, servedModel("version " + std::to_string(version)));
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    for (std::thread& thread : threads) {
        thread.join();
    }
    done = true;
    replacing.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_LE(service.sessions().idleCount(), 4U);
}

} // namespace
