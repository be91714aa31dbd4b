#include "CaseRun.h"
#include "FuzzSession.h"
#include "FuzzTargets.h"

void fuzz::sessionCase(std::string_view input) {
    // Small cases, and many of them; the large ones run in the ordinary tests.
    constexpr naive::CaseSize size{.objects = 12, .requests = 2, .checks = 3};
    naive::GeneratedCase const generated =
        naive::generateCase(std::span<std::uint8_t const>(
                                reinterpret_cast<std::uint8_t const*>(input.data()), input.size()),
                            size);
    CaseTally tally;
    std::string const difference = compareCase(plugin(), generated, tally);
    require(difference.empty(), "both evaluators answer alike: " + difference + "\n" +
                                    (difference.empty() ? "" : naive::described(generated)));
}
