#include "bench/Rows.h"

#include <benchmark/benchmark.h>

namespace bench {

namespace {

// The reference of the last shortcut: every shortcut of the model is looked at.
void refer(benchmark::State& state, std::size_t objects, std::size_t shortcuts) {
    constexpr double objectsPerSubject = 22.6;
    double const subjects = static_cast<double>(objects) / objectsPerSubject;
    World const& world =
        worldOf({.objects = objects + shortcuts,
                 .shortcutsPerSubject = static_cast<double>(shortcuts) / subjects});
    Asker asker(world, {.start = world.generated.lastShortcut, .depth = 1, .properties = {"_ref"}});
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(asker.ask());
    }
    state.counters["looked_at"] = static_cast<double>(world.generated.shortcuts);
}

} // namespace

void registerShortcuts(Sizes const& sizes) {
    for (std::size_t const shortcuts : sizes.shortcuts) {
        benchmark::RegisterBenchmark(rowName("shortcuts/vex", shortcuts).c_str(), refer,
                                     sizes.medium, shortcuts)
            ->Unit(benchmark::kMicrosecond);
    }
}

} // namespace bench
