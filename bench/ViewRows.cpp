#include "VexObject.h"
#include "bench/Rows.h"

#include <benchmark/benchmark.h>

namespace bench {

namespace {

// About half of the objects are in the view.
World const& worldWithIncluded(std::size_t ids, bool setForEachId = false) {
    return worldOf({.objects = 2 * ids, .setForEachId = setForEachId});
}

std::size_t readIds(World const& world) {
    VexObject const view(world.model->findById("view.half"));
    Vex_Handle_Collection items;
    view.getElementsByTagName("item", items);
    std::size_t units = 0;
    for (VEX_HANDLE const item : items) {
        I18NString id;
        VexObject(item).GetValue(id, true);
        units += static_cast<std::size_t>(id.length());
    }
    benchmark::DoNotOptimize(units);
    return items.size();
}

// A new request reads the view's list anew.
void open(benchmark::State& state, std::size_t ids, int depth, bool setForEachId) {
    World const& world = worldWithIncluded(ids, setForEachId);
    Asker asker(world,
                {.user = "half", .start = world.generated.inFolder.pathText(), .depth = depth});
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(asker.ask());
    }
    state.counters["ids"] = static_cast<double>(readIds(world));
}

void readFromModel(benchmark::State& state, std::size_t ids) {
    World const& world = worldWithIncluded(ids);
    std::size_t count = 0;
    for ([[maybe_unused]] auto const& _ : state) {
        count = readIds(world);
    }
    state.counters["ids"] = static_cast<double>(count);
}

} // namespace

void registerViews(Sizes const& sizes) {
    std::size_t const ids = sizes.includedIds;
    for (int const depth : {1, 2}) {
        std::string const what = "view/depth" + std::to_string(depth);
        benchmark::RegisterBenchmark(rowName(what, ids).c_str(), open, ids, depth, false)
            ->Unit(benchmark::kMicrosecond);
    }
    benchmark::RegisterBenchmark(rowName("view/sets", ids).c_str(), open, ids, 1, true)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(rowName("view/floor", ids).c_str(), readFromModel, ids)
        ->Unit(benchmark::kMicrosecond);
}

} // namespace bench
