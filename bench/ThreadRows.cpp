#include "bench/Rows.h"

#include <benchmark/benchmark.h>

namespace bench {

namespace {

// Each thread has a session of its own on the one model, and asks for all of a
// namespace.
void answer(benchmark::State& state, std::size_t objects) {
    World const& world = worldOf({.objects = objects});
    std::vector<std::string> names = world.generated.inFolder.path;
    constexpr std::size_t namesOfNamespace = 3;
    names.resize(namesOfNamespace);
    Asker asker(world, {.start = SubjectPlace{names, "", 0}.pathText(), .depth = 0});
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(asker.ask());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

} // namespace

void registerThreads(Sizes const& sizes) {
    for (int const threads : {1, 2}) {
        benchmark::RegisterBenchmark("threads", answer, sizes.medium)
            ->Threads(threads)
            ->UseRealTime()
            ->Unit(benchmark::kMicrosecond);
    }
}

} // namespace bench
