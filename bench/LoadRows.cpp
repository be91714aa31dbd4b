#include "bench/BareParse.h"
#include "bench/Rows.h"
#include "host/import/xml/ModelLoader.h"

#include <benchmark/benchmark.h>

namespace bench {

namespace {

void load(benchmark::State& state, std::size_t objects) {
    World const& world = worldOf({.objects = objects});
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(vex::loadModel(world.file));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(world.fileBytes) *
                            static_cast<std::int64_t>(state.iterations()));
}

void parse(benchmark::State& state, std::size_t objects) {
    World const& world = worldOf({.objects = objects});
    for ([[maybe_unused]] auto const& _ : state) {
        parseBare(world.file);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(world.fileBytes) *
                            static_cast<std::int64_t>(state.iterations()));
}

} // namespace

void registerLoad(Sizes const& sizes) {
    for (std::size_t const objects : {sizes.medium, sizes.large}) {
        benchmark::RegisterBenchmark(rowName("load/vex", objects).c_str(), load, objects)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(rowName("load/floor", objects).c_str(), parse, objects)
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace bench
