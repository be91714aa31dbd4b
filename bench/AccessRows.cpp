#include "VexObject.h"
#include "bench/Rows.h"

#include <set>

#include <benchmark/benchmark.h>

namespace bench {

namespace {

struct Case {
    char const* name;
    char const* user;
    RoleViews roleViews;
};

constexpr Case cases[] = {
    {"access/vex", "half", RoleViews::None},
    {"access/roles", "clerk", RoleViews::WithoutDefault},
    {"access/default", "clerk", RoleViews::WithDefault},
};

/// Handles all over the model, a power of two of them.
Vex_Handle_Collection someObjects(World const& world) {
    constexpr std::size_t count = 1'024;
    Vex_Handle_Collection objects;
    for (std::size_t i = 0; i < count; ++i) {
        objects.push_back(world.model->getElement(1 + i * world.generated.objects / count));
    }
    return objects;
}

// Many objects in a call; the time is that of one of them.
void check(benchmark::State& state, std::size_t objects, Case const& row) {
    World const& world = worldOf({.objects = objects, .roleViews = row.roleViews});
    vex::Visit const visit = world.visit(row.user);
    Vex_Handle_Collection const asked = someObjects(world);
    while (state.KeepRunningBatch(static_cast<std::int64_t>(asked.size()))) {
        benchmark::DoNotOptimize(service().access(visit, asked, 0, {}));
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

// A call for each object.
void checkOne(benchmark::State& state, std::size_t objects) {
    World const& world = worldOf({.objects = objects});
    vex::Visit const visit = world.visit("half");
    std::vector<Vex_Handle_Collection> calls;
    for (VEX_HANDLE const object : someObjects(world)) {
        calls.emplace_back().push_back(object);
    }
    std::size_t at = 0;
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(service().access(visit, calls[at], 0, {}));
        at = (at + 1) % calls.size();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

void lookUp(benchmark::State& state, std::size_t objects) {
    World const& world = worldOf({.objects = objects});
    Vex_Handle_Collection items;
    VexObject(world.model->findById("view.half")).getElementsByTagName("item", items);
    std::set<I18NString> included;
    for (VEX_HANDLE const item : items) {
        I18NString id;
        VexObject(item).GetValue(id, true);
        included.insert(id);
    }
    std::vector<I18NString> wanted;
    for (VEX_HANDLE const object : someObjects(world)) {
        I18NString id;
        VexObject(object).GetId(id);
        wanted.push_back(id);
    }
    std::size_t at = 0;
    for ([[maybe_unused]] auto const& _ : state) {
        benchmark::DoNotOptimize(included.contains(wanted[at]));
        at = (at + 1) % wanted.size();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

} // namespace

void registerAccess(Sizes const& sizes) {
    for (Case const& row : cases) {
        benchmark::RegisterBenchmark(rowName(row.name, sizes.medium).c_str(), check, sizes.medium,
                                     row);
    }
    benchmark::RegisterBenchmark(rowName("access/one", sizes.medium).c_str(), checkOne,
                                 sizes.medium);
    benchmark::RegisterBenchmark(rowName("access/floor", sizes.medium).c_str(), lookUp,
                                 sizes.medium);
}

} // namespace bench
