#include "VexObject.h"
#include "bench/Rows.h"

#include <string>
#include <utility>

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

Question question(World const& world, std::string const& user, int depth) {
    return {.user = user, .start = world.generated.inFolder.pathText(), .depth = depth};
}

// The view's ids are ready since the first request.
void open(benchmark::State& state, std::size_t ids, int depth, std::string const& user) {
    World const& world = worldWithIncluded(ids);
    Asker asker(world, question(world, user, depth));
    benchmark::DoNotOptimize(asker.ask());
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(asker.ask());
    }
    state.counters["ids"] = static_cast<double>(readIds(world));
}

// Each round on a version of the model that nobody has asked for anything.
template <class Work>
void onNewVersions(benchmark::State& state, World const& world, Work const& work) {
    for ([[maybe_unused]] auto const& _ : state) {
        state.PauseTiming();
        {
            World const fresh = reloaded(world);
            Asker asker(fresh, question(fresh, "half", 1));
            state.ResumeTiming();
            work(fresh, asker);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.counters["ids"] = static_cast<double>(readIds(world));
}

// The first request makes its view's ids ready.
void openFirst(benchmark::State& state, std::size_t ids, bool setForEachId) {
    onNewVersions(
        state, worldWithIncluded(ids, setForEachId),
        [](World const& /*fresh*/, Asker& asker) { benchmark::DoNotOptimize(asker.ask()); });
}

void readFromModel(benchmark::State& state, std::size_t ids) {
    onNewVersions(state, worldWithIncluded(ids),
                  [](World const& fresh, Asker& /*asker*/) { readIds(fresh); });
}

} // namespace

void registerViews(Sizes const& sizes) {
    std::size_t const ids = sizes.includedIds;
    for (int const depth : {1, 2}) {
        for (auto const& [what, user] : {std::pair("view/depth", "half"), {"view/all", ""}}) {
            benchmark::RegisterBenchmark(rowName(what + std::to_string(depth), ids).c_str(), open,
                                         ids, depth, std::string(user))
                ->Unit(benchmark::kMicrosecond);
        }
    }
    constexpr int versions = 10; // each is loaded anew
    for (auto const& [what, setForEachId] : {std::pair("view/first", false), {"view/sets", true}}) {
        benchmark::RegisterBenchmark(rowName(what, ids).c_str(), openFirst, ids, setForEachId)
            ->Unit(benchmark::kMicrosecond)
            ->Iterations(versions);
    }
    benchmark::RegisterBenchmark(rowName("view/floor", ids).c_str(), readFromModel, ids)
        ->Unit(benchmark::kMicrosecond)
        ->Iterations(versions);
}

} // namespace bench
