// Runs every kept input through its target: the seeds, and what was found.

#include "fuzz/FuzzTargets.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace {

struct Target {
    char const* name; // of its folders
    void (*run)(std::string_view);
};

constexpr Target targets[] = {
    {"startPath", fuzz::startPath},
    {"request", fuzz::request},
    {"model", fuzz::model},
    {"image", fuzz::image},
    {"catalogue", fuzz::catalogue},
    {"policy", fuzz::policy},
    {"sessionCase", fuzz::sessionCase},
    {"sessionLines", fuzz::sessionLines},
    {"tabular", fuzz::tabular},
    {"odata", fuzz::odata},
    {"ossie", fuzz::ossie},
    {"cube", fuzz::cube},
    {"xliff", fuzz::xliff},
    {"csv", fuzz::csv},
};

class FuzzReplay : public testing::TestWithParam<Target> {};

std::size_t replay(std::filesystem::path const& folder, Target const& target) {
    std::size_t count = 0;
    if (!std::filesystem::exists(folder)) {
        return count;
    }
    for (auto const& entry : std::filesystem::directory_iterator(folder)) {
        SCOPED_TRACE(entry.path());
        std::ifstream file(entry.path(), std::ios::binary);
        std::string const input{std::istreambuf_iterator<char>(file), {}};
        target.run(input);
        ++count;
    }
    return count;
}

TEST_P(FuzzReplay, KeptInputsBreakNoProperty) {
    std::filesystem::path const fuzz = std::filesystem::path(VEX_SOURCE_DIR) / "fuzz";
    EXPECT_GT(replay(fuzz / "corpus" / GetParam().name, GetParam()), 0U);
    replay(fuzz / "finds" / GetParam().name, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzReplay, testing::ValuesIn(targets),
                         [](auto const& tested) { return std::string(tested.param.name); });

} // namespace
