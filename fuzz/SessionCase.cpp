#include "CaseRun.h"
#include "FuzzSession.h"
#include "FuzzTargets.h"

void fuzz::sessionCase(std::string_view input) {
    naive::GeneratedCase const generated = naive::generateCase(std::span<std::uint8_t const>(
        reinterpret_cast<std::uint8_t const*>(input.data()), input.size()));
    CaseTally tally;
    std::string const difference = compareCase(plugin(), generated, tally);
    require(difference.empty(), "both evaluators answer alike: " + difference + "\n" +
                                    (difference.empty() ? "" : naive::described(generated)));
}
