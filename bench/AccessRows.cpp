#include "VexAction.h"
#include "VexNotification.h"
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
std::vector<VEX_HANDLE> someObjects(World const& world) {
    constexpr std::size_t count = 1'024;
    std::vector<VEX_HANDLE> objects;
    for (std::size_t i = 0; i < count; ++i) {
        objects.push_back(world.model->getElement(1 + i * world.generated.objects / count));
    }
    return objects;
}

void check(benchmark::State& state, std::size_t objects, Case const& row) {
    World const& world = worldOf({.objects = objects, .roleViews = row.roleViews});
    auto const session = world.openSession(row.user);
    plugin().Notify(*session, VexNotification::SessionOpened);
    vex::ActionValues values;
    VexVariant const modelPath = values.String(ModelPath);
    std::vector<VexParams> calls;
    for (VEX_HANDLE const object : someObjects(world)) {
        VexParams& in = calls.emplace_back();
        in.AddParam(VexVariant(0L));
        in.AddParam(modelPath);
        in.AddParam(VexVariant(object));
        in.AddParam(VexVariant(0L));
    }
    VexParams out;
    std::size_t at = 0;
    for ([[maybe_unused]] auto const& _ : state) {
        out.clear();
        plugin().DoAction(*session, VexVariant(VexAction::AccessibilityRequest), calls[at], out);
        at = (at + 1) % calls.size();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
    plugin().Notify(*session, VexNotification::SessionClosed);
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
    benchmark::RegisterBenchmark(rowName("access/floor", sizes.medium).c_str(), lookUp,
                                 sizes.medium);
}

} // namespace bench
