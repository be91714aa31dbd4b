#include "bench/BareParse.h"
#include "bench/Rows.h"
#include "host/import/xml/ModelLoader.h"

#include <benchmark/benchmark.h>
#ifdef VEX_HAS_PUGIXML
#include <pugixml.hpp>
#endif

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

#ifdef VEX_HAS_PUGIXML
/// A document of another library, in which nothing can be found but by walking through it.
void loadByHand(benchmark::State& state, std::size_t objects) {
    World const& world = worldOf({.objects = objects});
    for ([[maybe_unused]] auto const& _ : state) {
        pugi::xml_document document;
        benchmark::DoNotOptimize(document.load_file(world.file.c_str()));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(world.fileBytes) *
                            static_cast<std::int64_t>(state.iterations()));
}
#endif

} // namespace

void registerLoad(Sizes const& sizes) {
    for (std::size_t const objects : {sizes.medium, sizes.large}) {
        benchmark::RegisterBenchmark(rowName("load/vex", objects).c_str(), load, objects)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(rowName("load/floor", objects).c_str(), parse, objects)
            ->Unit(benchmark::kMillisecond);
#ifdef VEX_HAS_PUGIXML
        benchmark::RegisterBenchmark(rowName("load/pugixml", objects).c_str(), loadByHand, objects)
            ->Unit(benchmark::kMillisecond);
#endif
    }
}

} // namespace bench
