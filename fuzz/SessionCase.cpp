#include "CaseRun.h"
#include "FuzzSession.h"
#include "FuzzTargets.h"

void fuzz::sessionCase(std::string_view input) {
    // Small cases, and many of them. Inputs of every 16th length make one of any
    // size, with more objects and more calls of one session.
    constexpr naive::CaseSize small{.objects = 12, .requests = 2, .checks = 3};
    constexpr std::size_t seldom = 16;
    naive::CaseSize const size = input.size() % seldom == 0 ? naive::CaseSize() : small;
    naive::GeneratedCase const generated =
        naive::generateCase(std::span<std::uint8_t const>(
                                reinterpret_cast<std::uint8_t const*>(input.data()), input.size()),
                            size);
    // Shortcuts in shortcuts make paths so long that thousands of steps take seconds.
    constexpr std::size_t mostSteps = 2000;
    CaseTally tally;
    std::string const difference = compareCase(plugin(), generated, tally, mostSteps);
    require(difference.empty(), "both evaluators answer alike: " + difference + "\n" +
                                    (difference.empty() ? "" : naive::described(generated)));
}
