#include "bench/Rows.h"

#include <benchmark/benchmark.h>

namespace bench {

namespace {

void open(benchmark::State& state, std::size_t objects, int depth) {
    World const& world = worldOf({.objects = objects});
    Asker asker(world, {.user = "", .start = world.generated.inFolder.pathText(), .depth = depth});
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(asker.ask());
    }
}

} // namespace

void registerInteractive(Sizes const& sizes) {
    for (std::size_t const objects : {sizes.small, sizes.large}) {
        for (int const depth : {1, 2}) {
            std::string const what = "interactive/depth" + std::to_string(depth);
            benchmark::RegisterBenchmark(rowName(what, objects).c_str(), open, objects, depth)
                ->Unit(benchmark::kMicrosecond);
        }
    }
}

} // namespace bench
