#include "fuzz/FuzzSession.h"
#include "fuzz/FuzzTargets.h"
#include "fuzz/SessionCaseInput.h"
#include "tests/differential/CaseRun.h"

#include <unordered_map>

namespace {

naive::Random choicesOf(std::string const& text) {
    return naive::Random(std::span<std::uint8_t const>(
        reinterpret_cast<std::uint8_t const*>(text.data()), text.size()));
}

// Small cases, and many of them.
naive::CaseSize sizeFor(std::string const& choices) {
    constexpr naive::CaseSize small{.objects = 6, .requests = 1, .checks = 2};
    return fuzz::asksForAnySize(choices) ? naive::CaseSize() : small;
}

// To make and read a world takes longer than a session on it.
LoadedWorld const& worldOf(std::string const& choices) {
    constexpr std::size_t most = 2000;
    static std::unordered_map<std::string, LoadedWorld> worlds;
    auto const known = worlds.find(choices);
    if (known != worlds.end()) {
        return known->second;
    }
    if (worlds.size() == most) {
        worlds.clear();
    }
    naive::Random random = choicesOf(choices);
    return worlds.try_emplace(choices, naive::generateWorld(random, sizeFor(choices)))
        .first->second;
}

} // namespace

void fuzz::sessionCase(std::string_view input) {
    SessionCaseInput const parts = splitSessionCase(input);
    LoadedWorld const& world = worldOf(parts.world);
    naive::Random random = choicesOf(parts.session);
    std::vector<naive::SessionStep> const steps =
        naive::generateSession(random, world.Generated(), sizeFor(parts.session));
    // Shortcuts in shortcuts make paths so long that thousands of steps take seconds.
    constexpr std::size_t mostSteps = 2000;
    CaseTally tally;
    std::string const difference = compareSession(plugin(), world, steps, tally, mostSteps);
    require(difference.empty(),
            "both evaluators answer alike: " + difference + "\n" +
                (difference.empty() ? "" : naive::described(world.Generated(), steps)));
}
