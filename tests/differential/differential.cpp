// Compares the plug-in with the plain evaluator on random models and sessions.
//
//   vex_differential [--seed N] [--requests N]
//
// Starts at the seed (1) and goes on until that many requests (20,000) were
// compared. With --requests 1 it replays one case. Exit 1 at a difference.
//
// On every third model no sets of ids are ready: there the plug-in reads them.

#include "tests/differential/CaseRun.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>

namespace {

struct Arguments {
    std::uint64_t seed = 1;
    std::size_t requests = 20'000;
};

bool read(int count, char** words, Arguments& arguments) {
    for (int index = 1; index + 1 < count; index += 2) {
        std::string_view const option = words[index];
        unsigned long long const number = std::strtoull(words[index + 1], nullptr, 10);
        if (option == "--seed") {
            arguments.seed = number;
        } else if (option == "--requests") {
            arguments.requests = number;
        } else {
            return false;
        }
    }
    return count % 2 == 1;
}

void muteStandardOutputOfPlugin() {
    // The plug-in writes a line there for each parameter of a wrong type.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        std::perror("/dev/null");
    }
}

int report(CaseTally const& tally, std::uint64_t seeds) {
    auto const percent = [&tally](std::size_t part) {
        return tally.calls == 0 ? 0 : 100 * part / tally.calls;
    };
    std::fprintf(stderr,
                 "%zu calls in %llu sessions agree: %zu%% trees, %zu%% failures, %zu%% on models "
                 "with shortcuts, %zu%% under views, %zu%% at references; %zu sessions given up\n",
                 tally.calls, static_cast<unsigned long long>(seeds), percent(tally.trees),
                 percent(tally.raised), percent(tally.shortcuts), percent(tally.restricted),
                 percent(tally.references), tally.givenUp);
    return EXIT_SUCCESS;
}

} // namespace

int main(int count, char** words) {
    Arguments arguments;
    if (!read(count, words, arguments)) {
        std::fputs("usage: vex_differential [--seed N] [--requests N]\n", stderr);
        return 2;
    }
    muteStandardOutputOfPlugin();
    vex::PluginProxy plugin(VEX_PLUGIN_FILE);
    plugin.Initialize();
    CaseTally tally;
    std::uint64_t seed = arguments.seed;
    for (; tally.calls < arguments.requests; ++seed) {
        naive::GeneratedCase const generated = naive::generateCase(seed);
        std::string difference;
        try {
            LoadedWorld const world(generated.world);
            if (seed % 3 == 0) {
                world.useUpRoomForSets();
            }
            difference = compareSession(plugin, world, generated.steps, tally);
        } catch (std::exception const& e) {
            difference = std::string("stopped: ") + e.what();
        }
        if (!difference.empty()) {
            std::fprintf(stderr, "seed %llu: %s\n%s\n", static_cast<unsigned long long>(seed),
                         difference.c_str(),
                         naive::described(generated.world, generated.steps).c_str());
            return EXIT_FAILURE;
        }
    }
    return report(tally, seed - arguments.seed);
}
