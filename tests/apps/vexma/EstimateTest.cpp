#include "tests/apps/vexma/ToolRun.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::string const samples = VEX_SOURCE_DIR "/samples/";

std::size_t numberIn(std::string const& text, char const* pattern) {
    std::smatch found;
    bool const isFound = std::regex_search(text, found, std::regex(pattern));
    return isFound ? std::stoul(found[1]) : 0;
}

std::size_t elementsIn(std::string const& response) {
    std::regex const startTag("<[A-Za-z]");
    return static_cast<std::size_t>(std::distance(
        std::sregex_iterator(response.begin(), response.end(), startTag), std::sregex_iterator()));
}

std::vector<std::string> sampleRequests() {
    std::vector<std::string> files;
    for (auto const& entry : std::filesystem::directory_iterator(samples + "requests")) {
        files.push_back(entry.path().stem().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

class Estimates : public testing::TestWithParam<std::string> {};

/// The estimate of bytes holds when the answer fits in as many.
TEST_P(Estimates, HaveTheElementsOfTheAnswerAndBytesThatItFitsIn) {
    ToolFolder const folder;
    for (char const* const user : {"admin", "ann", "carl"}) {
        for (char const* const locale : {"en", "de", "ja"}) {
            std::vector<std::string> arguments{"metadata",
                                               "--catalog",
                                               samples + "retail.catalog.xml",
                                               "--model",
                                               "/content/retail",
                                               "--user",
                                               user,
                                               "--locale",
                                               locale,
                                               "--request",
                                               samples + "requests/" + GetParam() + ".xml"};
            ToolResult const answer = folder.Run(arguments);
            if (answer.status != 0) {
                continue; // a view that the user may not use, a name of another language
            }
            arguments.emplace_back("--estimate");
            std::string const estimate = folder.Run(arguments).out;
            std::size_t const bytes = numberIn(estimate, "bytes     at most ([0-9]+)");
            EXPECT_EQ(elementsIn(answer.out), numberIn(estimate, "elements  ([0-9]+)"))
                << user << ' ' << locale;
            arguments.back() = "--max-bytes=" + std::to_string(bytes);
            EXPECT_EQ(folder.Run(arguments).status, 0) << user << ' ' << locale << ' ' << bytes;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, Estimates, testing::ValuesIn(sampleRequests()));

std::string estimateOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"metadata", "--estimate"});
    return ToolFolder().Run(arguments).out;
}

TEST(Estimate, CountsTheElementsOfTheAnswer) {
    EXPECT_THAT(estimateOf({"small.model.xml"}), StartsWith("elements  6\n"));
    EXPECT_THAT(estimateOf({"small.model.xml", "--depth", "2"}), StartsWith("elements  4\n"));
    EXPECT_THAT(estimateOf({"small.model.xml", "--start", "[Sales].[Orders]", "--depth", "1"}),
                StartsWith("elements  3\n"));
}

TEST(Estimate, CountsWhatTheUsersViewsLeave) {
    ToolFolder const folder;
    for (char const* const depth : {"0", "1", "2", "3"}) {
        std::size_t const elements =
            elementsIn(folder.Run(ToolFolder::As("metadata", "ann", {"--depth", depth})).out);
        EXPECT_THAT(
            folder.Run(ToolFolder::As("metadata", "ann", {"--depth", depth, "--estimate"})).out,
            StartsWith("elements  " + std::to_string(elements) + "\n"));
    }
}

TEST(Estimate, CountsSettingsAndPackages) {
    ToolFolder const folder;
    for (char const* const option : {"--global=supportedLocales", "--functions"}) {
        std::string const given = folder.Run(ToolFolder::As("metadata", "ann", {option})).out;
        EXPECT_THAT(folder.Run(ToolFolder::As("metadata", "ann", {option, "--estimate"})).out,
                    StartsWith("elements  " + std::to_string(elementsIn(given)) + "\n"));
    }
}

TEST(Estimate, IsRefusedWhenTheAnswerWouldBe) {
    ToolResult const result =
        ToolFolder().Run({"metadata", "small.model.xml", "--start", "[Nowhere]", "--estimate"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.error, HasSubstr("Nowhere"));
}

/// The answer doubles and more with each level of depth.
std::string explodingModel() {
    std::string model = "<model><namespace name='A'>";
    for (char const* const name : {"B", "C", "D"}) {
        model += std::string("<shortcut name='") + name + "' refobj='[A]'/>";
    }
    return model + "</namespace></model>";
}

TEST(Estimate, EndsAtTheDeadline) {
    ToolFolder const folder;
    folder.Write("m.xml", explodingModel());
    ToolResult const result = folder.Run({"metadata", "m.xml", "--estimate", "--depth", "400",
                                          "--max-elements", "1000000000000", "--deadline", "0.3"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.error, HasSubstr("deadline"));
}

TEST(Estimate, StopsAtTheLimitOfElements) {
    ToolFolder const folder;
    folder.Write("m.xml", explodingModel());
    EXPECT_THAT(folder.Run({"metadata", "m.xml", "--estimate", "--depth", "40"}).out,
                HasSubstr("elements  more than 2000000\n"));
    EXPECT_THAT(folder.Run({"metadata", "m.xml", "--estimate"}).out, StartsWith("elements  51\n"));
    EXPECT_EQ(elementsIn(folder.Run({"metadata", "m.xml"}).out), 51U);
}

} // namespace
