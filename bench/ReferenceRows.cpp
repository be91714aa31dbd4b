#include "bench/Rows.h"

#include <benchmark/benchmark.h>

namespace bench {

namespace {

void direct(benchmark::State& state, std::size_t objects) {
    World const& world = worldOf({.objects = objects});
    Asker asker(world, {.reference = world.generated.direct.referenceText(), .depth = 1});
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(asker.ask());
    }
}

// A query subject in a folder is no member of its namespace: all of the model's
// are looked at, up to this one.
void modelWide(benchmark::State& state, std::size_t objects) {
    World const& world = worldOf({.objects = objects});
    Asker asker(world, {.reference = world.generated.last.referenceText(), .depth = 1});
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(asker.ask());
    }
    state.counters["looked_at"] = static_cast<double>(world.generated.last.number + 1);
}

} // namespace

void registerReferences(Sizes const& sizes) {
    for (std::size_t const objects : {sizes.small, sizes.large}) {
        benchmark::RegisterBenchmark(rowName("reference/direct", objects).c_str(), direct, objects)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(rowName("reference/modelwide", objects).c_str(), modelWide,
                                     objects)
            ->Unit(benchmark::kMicrosecond);
    }
}

} // namespace bench
